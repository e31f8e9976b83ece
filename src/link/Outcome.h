/// How operations end, and what reads give. An export hands the numbers to its host as they are.
#ifndef TELVO_SRC_LINK_OUTCOME_H
#define TELVO_SRC_LINK_OUTCOME_H

#include <cstdint>
#include <optional>

enum class [[nodiscard]] Outcome : std::int32_t{
    Done = 0,
    Failed = -1,
    /// The camera has the feature but does not offer it in its present state.
    NotAvailable = -2,
};

/// Outcome of a step of which all that matters is whether it was taken.
constexpr Outcome doneIf(bool isDone)
{
    return isDone ? Outcome::Done : Outcome::Failed;
}

/// What a read gives. Outcome and value are apart because hosts know reads that fail and still show
/// a value, and reads that succeed and leave the host's value alone.
template <typename T>
struct [[nodiscard]] Reading {
    Outcome outcome = Outcome::Failed;
    std::optional<T> value{}; ///< what the host sees from now on; nothing: what it saw before

    bool isDone() const { return outcome == Outcome::Done; }
};

template <typename T>
constexpr Reading<T> done(T value)
{
    return {.outcome = Outcome::Done, .value = value};
}

#endif
