#ifndef TELVO_GIGE_CONTROL_HEARTBEAT_H
#define TELVO_GIGE_CONTROL_HEARTBEAT_H

#include "ControlChannel.h"
#include "ControlLimits.h"
#include "DeviceRegisters.h"
#include "LinkSettings.h"
#include "Reason.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
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
    /// Of what it tells.
    HeartbeatBounds bounds{};
};

/// Reads the device's control channel privilege again and again, so that the device keeps it for
/// us, and notices when the device is gone or another host has taken control. It then closes the
/// channel and calls `lost`, once, on its own thread. A channel that closes for another reason is a
/// lost link too. Threads: one of its own; the public operations any. mLock guards mStopped and
/// mIsTelling, mThreadId is atomic, mDuty and mLoss belong to the thread. Nothing of this object is
/// used once `lost` is called.
class Heartbeat
{
  public:
    /// All references are borrowed for the object's life.
    /// @param lost  kept, with what it holds, until it has returned, which may be after this
    ///              object's end; throws nothing
    /// @return null: there is no thread to be had, and the channel is closed
    static std::unique_ptr<Heartbeat> start(ControlChannel& channel, DeviceRegisters& registers,
                                            const LinkSettings& settings, const HeartbeatDuty& duty,
                                            std::function<void()> lost);
    /// Stops. Allowed within `lost`. The program that contains this code stays loaded from now on
    /// if `lost` is still running.
    ~Heartbeat();
    Heartbeat(const Heartbeat&) = delete;
    Heartbeat& operator=(const Heartbeat&) = delete;

    /// Closes the channel. No heartbeat after this, and no call of `lost` begins; waits for a
    /// running one half a second at most, since nobody knows what it waits for, and not on its own
    /// thread.
    /// @return false: the channel was closed already
    bool stop();

  private:
    enum class Beat : std::uint8_t { Answered, Unanswered, LinkLost };

    Heartbeat(ControlChannel& channel, DeviceRegisters& registers, const LinkSettings& settings,
              const HeartbeatDuty& duty);

    void run(const std::function<void()>& lost);
    /// @return whether `lost` shall be called
    bool giveUp();
    /// Ends the thread, or lets it finish `lost` alone.
    void leaveThread();
    Beat beat();
    /// A heartbeat for which there is no memory counts as unanswered.
    Beat beatOrFail();
    [[nodiscard]] Beat unanswered();
    /// Keeps what is to be told of the loss.
    Beat linkLost(const log::Reason& reason);
    void tell(const log::Reason& reason) const;
    /// When the device will have been silent for too long.
    [[nodiscard]] ControlChannel::TimePoint silenceEnds() const;
    [[nodiscard]] std::vector<std::uint32_t> watchedRegisters() const;
    /// @param values  of the watched registers
    Beat judge(const std::vector<std::uint32_t>& values);
    [[nodiscard]] std::chrono::milliseconds pauseAfter(Beat beat) const;

    ControlChannel& mChannel;
    DeviceRegisters& mRegisters;
    const LinkSettings& mSettings;
    HeartbeatDuty mDuty;
    log::Reason mLoss; // why the link was lost
    std::mutex mLock;
    bool mStopped = false;
    bool mIsTelling = false;
    std::atomic<std::thread::id> mThreadId{}; // none until the thread runs
    std::promise<void> mEnd;
    std::future<void> mEnded{mEnd.get_future()}; // the thread has come to its end
    std::thread mThread;                         // last: it uses all others
};

} // namespace gige::control

#endif
