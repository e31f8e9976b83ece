#ifndef TELVO_SRC_FEATURES_RETRIEDACCESS_H
#define TELVO_SRC_FEATURES_RETRIEDACCESS_H

#include "LogText.h"
#include "PvResult.h"
#include "Timing.h"

#include <cstdint>

/// Tries of an access that cameras are known to refuse at first.
constexpr std::int32_t kFeatureTries = 4;
/// Between two such tries.
constexpr std::chrono::milliseconds kFeatureRetryPause{500};

/// Number of a try (from 1), code of the camera's refusal, its code string.
using RefusalText = LogText<std::int32_t, std::int32_t, const char*>;

inline void logRefusal(const RefusalText& text, std::int32_t tryNumber, const PvResult& result)
{
    text.log(tryNumber, static_cast<std::int32_t>(result.GetCode()),
             result.GetCodeString().GetAscii());
}

/// Tries an access until the camera takes it, with a pause after every refusal.
/// @param access  gives the camera's PvResult
/// @param taken   gets the number of the try that succeeded
/// @return whether one of the tries succeeded
template <typename Access, typename Taken>
[[nodiscard]] bool retryWithPauses(Access access, Taken taken, const RefusalText& refused)
{
    for (std::int32_t tryNumber = 1; tryNumber <= kFeatureTries; ++tryNumber) {
        const PvResult result = access();
        if (result.IsOK()) {
            taken(tryNumber);
            return true;
        }
        logRefusal(refused, tryNumber, result);
        sleepFor(kFeatureRetryPause);
    }
    return false;
}

#endif
