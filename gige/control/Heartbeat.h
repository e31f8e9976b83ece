#ifndef TELVO_GIGE_CONTROL_HEARTBEAT_H
#define TELVO_GIGE_CONTROL_HEARTBEAT_H

#include "ControlChannel.h"
#include "DeviceRegisters.h"
#include "LinkSettings.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <thread>
#include <vector>

namespace gige::control
{

/// The application that holds a device's control channel, as the device sees it.
struct PrimaryApplication {
    std::uint32_t port = 0;    // 0x0A04
    std::uint32_t address = 0; // 0x0A14
    bool operator==(const PrimaryApplication&) const = default;
};

/// What a heartbeat has to watch over.
struct HeartbeatDuty {
    /// We hold the control channel privilege; false for a connection that only reads.
    bool ownsControl = false;
    /// Where the device tells who holds it: that it is we.
    std::optional<PrimaryApplication> owner{};
    /// How long either side may stay silent.
    std::chrono::milliseconds timeout{3000};
    /// The device tells its heartbeat timeout (0x0938): `timeout` follows it, for a feature may
    /// change it.
    bool timeoutReadable = false;
};

/**
 * Reads the device's control channel privilege again and again, so that the device keeps it for us,
 * and notices when the device is gone or another host has taken control. It then closes the channel
 * and calls `lost`, once, on its own thread. A channel that closes for another reason is a lost
 * link too.
 * Threads: one of its own; the public operations any. mStopped and mThreadId are atomic, mDuty
 * belongs to the thread.
 */
class Heartbeat
{
  public:
    /// All references are borrowed for the object's life; `lost` only until stop() returns.
    Heartbeat(ControlChannel& channel, DeviceRegisters& registers, const LinkSettings& settings,
              const HeartbeatDuty& duty, std::function<void()> lost);
    /// Stops. Allowed within `lost`.
    ~Heartbeat();
    Heartbeat(const Heartbeat&) = delete;
    Heartbeat& operator=(const Heartbeat&) = delete;

    /// Closes the channel. No heartbeat and no call of `lost` after this; waits for a running call,
    /// except on its own thread.
    /// @return false: the channel was closed already
    bool stop();

  private:
    enum class Beat : std::uint8_t { Answered, Unanswered, LinkLost };

    void run(const std::function<void()>& lost);
    Beat beat();
    [[nodiscard]] std::vector<std::uint32_t> watchedRegisters() const;
    /// @param values  of the watched registers
    Beat judge(const std::vector<std::uint32_t>& values);
    [[nodiscard]] std::chrono::milliseconds pauseAfter(Beat beat) const;

    ControlChannel& mChannel;
    DeviceRegisters& mRegisters;
    const LinkSettings& mSettings;
    HeartbeatDuty mDuty;
    std::atomic<bool> mStopped{false};
    std::atomic<std::thread::id> mThreadId{}; // none until the thread runs
    std::thread mThread;                      // last: it uses all others
};

} // namespace gige::control

#endif
