#ifndef TELVO_GIGE_RESULT_RESULT_H
#define TELVO_GIGE_RESULT_RESULT_H

#include <cassert>
#include <functional>
#include <optional>
#include <type_traits>
#include <utility>

namespace gige
{

/// A value, or the status that says why there is none. Each layer has a status type of its own;
/// `Status{}` means success in every one.
template <typename T, typename Status>
class [[nodiscard]] Result
{
  public:
    // Implicit: operations return a bare value or a bare status.
    Result(T value) : mValue(std::move(value)) {}
    Result(Status failure) : mStatus(failure) { assert(failure != Status{}); }

    explicit operator bool() const { return mValue.has_value(); }
    /// Success if and only if there is a value.
    const Status& status() const { return mStatus; }

    // Only if there is a value.
    T& operator*() & { return *mValue; }
    const T& operator*() const& { return *mValue; }
    T&& operator*() && { return *std::move(mValue); }
    T* operator->() { return &*mValue; }
    const T* operator->() const { return &*mValue; }

    T valueOr(T otherwise) const { return mValue.value_or(std::move(otherwise)); }

    /// What `change` makes of the value; the same failure if there is none.
    template <typename Change>
    auto transform(Change change) const
    {
        using Changed = Result<std::decay_t<std::invoke_result_t<Change, const T&>>, Status>;
        return mValue ? Changed(std::invoke(change, *mValue)) : Changed(mStatus);
    }

    /// The result or status of `next` for the value; the same failure if there is none.
    template <typename Next>
    auto andThen(Next next) const
    {
        using Returned = std::invoke_result_t<Next, const T&>;
        return mValue ? std::invoke(next, *mValue) : Returned(mStatus);
    }

  private:
    std::optional<T> mValue;
    Status mStatus{};
};

} // namespace gige

#endif
