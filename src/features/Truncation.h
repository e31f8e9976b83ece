#ifndef TELVO_SRC_FEATURES_TRUNCATION_H
#define TELVO_SRC_FEATURES_TRUNCATION_H

#include <limits>

/// The integer part of a number. One that does not fit, and NaN, give the least integer, as the
/// processor's own conversion does: cameras refuse it.
template <typename Integer>
constexpr Integer truncated(double value)
{
    constexpr double kLimit = -static_cast<double>(std::numeric_limits<Integer>::min());
    return value > -kLimit - 1.0 && value < kLimit ? static_cast<Integer>(value)
                                                   : std::numeric_limits<Integer>::min();
}

#endif
