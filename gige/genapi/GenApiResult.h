#ifndef TELVO_GIGE_GENAPI_GENAPIRESULT_H
#define TELVO_GIGE_GENAPI_GENAPIRESULT_H

#include "GenApiStatus.h"

#include <cassert>
#include <optional>
#include <utility>

namespace gige::genapi
{

/// A value, or the status that says why there is none.
template <typename T>
class [[nodiscard]] Result
{
  public:
    // Implicit: operations return a bare value or a bare status.
    Result(T value) : mValue(std::move(value)) {}
    Result(Status error) : mStatus(error) { assert(error != Status::Ok); }

    explicit operator bool() const { return mValue.has_value(); }
    /// Ok if and only if there is a value.
    Status status() const { return mStatus; }

    T& operator*() & { return *mValue; }
    const T& operator*() const& { return *mValue; }
    T&& operator*() && { return *std::move(mValue); }
    T* operator->() { return &*mValue; }
    const T* operator->() const { return &*mValue; }

  private:
    std::optional<T> mValue;
    Status mStatus = Status::Ok;
};

} // namespace gige::genapi

#endif
