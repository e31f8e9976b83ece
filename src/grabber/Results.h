#ifndef TELVO_SRC_GRABBER_RESULTS_H
#define TELVO_SRC_GRABBER_RESULTS_H

#include <cstdint>

/// Results that grabber operations share. Positive codes belong to the operation that returns them.
constexpr std::int32_t kSuccess = 0;
constexpr std::int32_t kFailure = -1;
/// The camera has the feature but does not offer it in its present state.
constexpr std::int32_t kNotAvailable = -2;

#endif
