#ifndef TELVO_GIGE_CONTROL_CONTROLLIMITS_H
#define TELVO_GIGE_CONTROL_CONTROLLIMITS_H

#include <algorithm>
#include <chrono>
#include <cstdint>

namespace gige::control
{

/// Longer than any device is waited for.
inline constexpr std::chrono::milliseconds kUnlimited = std::chrono::years(1);

/// How long a device is waited for.
struct Patience {
    /// For the answer to one sending of a command, at most; the link's settings may say less.
    std::chrono::milliseconds sending{};
    /// In vain since the device's last answer. When it is used up, commands time out at once.
    std::chrono::milliseconds silence{};
    /// By PENDING_ACK, for one command in all.
    std::chrono::milliseconds pending{};
};

/// Between which values a heartbeat timeout is believed, whatever the device's register (0x0938)
/// reads.
struct HeartbeatBounds {
    std::chrono::milliseconds shortest{500};
    std::chrono::milliseconds longest{60'000};

    [[nodiscard]] std::chrono::milliseconds believed(std::uint32_t milliseconds) const
    {
        return std::clamp(std::chrono::milliseconds(milliseconds), shortest, longest);
    }
};

/// What no device may exceed; only tests change them.
struct ControlLimits {
    /// While a connection is made. A lost datagram is sent again soon, and a host that tries six
    /// times knows within ten seconds that a device is silent.
    Patience opening{.sending = std::chrono::milliseconds(225),
                     .silence = std::chrono::milliseconds(900),
                     .pending = std::chrono::milliseconds(3000)};
    /// While it lasts. Writing flash is what devices ask for time for.
    Patience connected{
        .sending = kUnlimited, .silence = kUnlimited, .pending = std::chrono::milliseconds(30'000)};
    /// While the host takes leave, who is gone within two seconds whatever the device answers.
    Patience leaving{.sending = std::chrono::milliseconds(100),
                     .silence = std::chrono::milliseconds(400),
                     .pending = std::chrono::milliseconds(0)};
    /// A host that is still there then did not leave.
    std::chrono::milliseconds leavingTime{5000};
    HeartbeatBounds heartbeat{};
};

} // namespace gige::control

#endif
