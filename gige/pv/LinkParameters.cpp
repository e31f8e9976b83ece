#include "LinkParameters.h"

#include <limits>

LinkParameters::LinkParameters()
{
    addSetting("AnswerTimeout", 1, mSettings.answerTimeout);
    addSetting("CommandRetryCount", 0, mSettings.commandRetryCount);
    addSetting("DefaultHeartbeatTimeout", 1, mSettings.defaultHeartbeatTimeout);
    addSetting("HeartbeatInterval", 1, mSettings.heartbeatInterval);
    addSetting("DisconnectOnAnswerTimeout", 0, mSettings.disconnectOnAnswerTimeout);
}

void LinkParameters::addSetting(const char* name, std::int64_t minimum,
                                std::atomic<std::uint32_t>& setting)
{
    // Hosts set these as signed 32-bit numbers.
    constexpr std::int64_t kMaximum = std::numeric_limits<std::int32_t>::max();
    mArray.addSetting(
        name, {.minimum = minimum, .maximum = kMaximum},
        [&setting] { return std::int64_t{setting}; },
        [&setting](std::int64_t value) { setting = static_cast<std::uint32_t>(value); });
}
