#ifndef TELVO_GIGE_CONTROL_LINKSETTINGS_H
#define TELVO_GIGE_CONTROL_LINKSETTINGS_H

#include <atomic>
#include <cstdint>

namespace gige::control
{

/// Parameters of the control link, by the names under which hosts set them. They exist without a
/// connection and may be changed while connected.
/// Threads: any; each is atomic.
struct LinkSettings {
    /// Milliseconds that one sending of a command waits for its answer.
    std::atomic<std::uint32_t> answerTimeout{1000};
    /// How often an unanswered command is sent again, after the first time.
    std::atomic<std::uint32_t> commandRetryCount{3};
    /// Milliseconds, written to the device's heartbeat timeout register (0x0938) by a connect.
    std::atomic<std::uint32_t> defaultHeartbeatTimeout{3000};
    /// Milliseconds between two heartbeats; a third of the device's timeout at most. A change
    /// counts from the next heartbeat on.
    std::atomic<std::uint32_t> heartbeatInterval{1000};
    /// Not 0: the first command that goes unanswered ends the link.
    std::atomic<std::uint32_t> disconnectOnAnswerTimeout{0};
};

} // namespace gige::control

#endif
