#include "Heartbeat.h"

#include "BootstrapRegisters.h"
#include "LoadedModule.h"
#include "Reasons.h"
#include "StackLog.h"
#include "StartThread.h"

#include <algorithm>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace gige::control
{

namespace
{

constexpr std::uint32_t kOwningBits = wire::kPrivilegeExclusive | wire::kPrivilegeControl;
/// Pause after an unanswered heartbeat: each has already waited for its answer.
constexpr std::chrono::milliseconds kUnansweredPause{50};
constexpr std::chrono::milliseconds kShortestInterval{10};
/// Wait for a running `lost`: as good as any that ends, but a host's may wait for the one who
/// stops.
constexpr std::chrono::milliseconds kTellingLimit{500};
/// Heartbeats per timeout of the device, at least: two may be lost.
constexpr int kBeatsPerTimeout = 3;

std::string textOf(const PrimaryApplication& host)
{
    return host.address == 0 ? ""
                             : net::toText(net::Ipv4Address{host.address}) + ", port " +
                                   std::to_string(host.port & 0xFFFFU);
}

} // namespace

Heartbeat::Heartbeat(ControlChannel& channel, DeviceRegisters& registers,
                     const LinkSettings& settings, const HeartbeatDuty& duty)
    : mChannel(channel),
      mRegisters(registers),
      mSettings(settings),
      mDuty(duty),
      mLoss(log::linkClosed())
{
}

std::unique_ptr<Heartbeat> Heartbeat::start(ControlChannel& channel, DeviceRegisters& registers,
                                            const LinkSettings& settings, const HeartbeatDuty& duty,
                                            std::function<void()> lost)
{
    std::unique_ptr<Heartbeat> heartbeat(new Heartbeat(channel, registers, settings, duty));
    auto body = [self = heartbeat.get(), lost = std::move(lost),
                 end = std::move(heartbeat->mEnd)]() mutable {
        self->run(lost);
        end.set_value();
    };
    const bool isStarted = net::startThread(heartbeat->mThread, std::move(body));
    return isStarted ? std::move(heartbeat) : nullptr;
}

Heartbeat::~Heartbeat()
{
    stop();
    leaveThread();
}

bool Heartbeat::stop()
{
    bool closedNow = false;
    bool isTelling = false;
    {
        const std::lock_guard lock(mLock);
        mStopped = true;
        closedNow = mChannel.close();
        isTelling = mIsTelling;
    }
    const bool isOwnThread = mThreadId.load() == std::this_thread::get_id();
    const bool ends =
        !isOwnThread && (!isTelling || mEnded.wait_for(kTellingLimit) == std::future_status::ready);
    if (ends && mThread.joinable()) {
        mThread.join();
    }
    return closedNow;
}

void Heartbeat::leaveThread()
{
    if (mThread.joinable()) { // within `lost`, where run() touches nothing of this object
        net::keepLoaded();
        mThread.detach();
    }
}

void Heartbeat::run(const std::function<void()>& lost)
{
    mThreadId = std::this_thread::get_id();
    Beat last = Beat::Answered;
    while (last != Beat::LinkLost && mChannel.sleep(pauseAfter(last))) {
        last = beatOrFail();
    }
    if (giveUp()) {
        tell(mLoss);
        lost(); // may destroy this object
    }
}

bool Heartbeat::giveUp()
{
    const std::lock_guard lock(mLock);
    if (!mStopped) {
        mIsTelling = true;
        mChannel.close();
    }
    return mIsTelling;
}

Heartbeat::Beat Heartbeat::beatOrFail()
{
    try {
        return beat();
    } catch (const std::bad_alloc&) {
        return unanswered();
    }
}

Heartbeat::Beat Heartbeat::beat()
{
    const auto values = mRegisters.readRegisters(watchedRegisters(), silenceEnds());
    if (values) {
        return judge(*values);
    }
    if (isDeviceError(values.status())) {
        const bool taken =
            mDuty.ownsControl && values.status() == deviceError(wire::GvcpStatus::AccessDenied);
        return taken ? linkLost(log::controlTaken("")) : Beat::Answered;
    }
    return unanswered();
}

Heartbeat::Beat Heartbeat::unanswered()
{
    // Looked up anew, since another thread's command may have been answered in the meantime.
    if (mChannel.clock().now() >= silenceEnds()) {
        return linkLost(log::linkSilent(mDuty.timeout.count()));
    }
    if (!mChannel.isClosed()) {
        tell(log::heartbeatUnanswered());
    }
    return Beat::Unanswered;
}

Heartbeat::Beat Heartbeat::linkLost(const log::Reason& reason)
{
    mLoss = reason;
    return Beat::LinkLost;
}

void Heartbeat::tell(const log::Reason& reason) const
{
    log::say(net::toText(mChannel.device()), reason);
}

ControlChannel::TimePoint Heartbeat::silenceEnds() const
{
    return mChannel.answeredUntil() + mDuty.timeout;
}

std::vector<std::uint32_t> Heartbeat::watchedRegisters() const
{
    std::vector<std::uint32_t> registers{wire::kRegControlPrivilege};
    if (mDuty.owner) {
        registers.push_back(wire::kRegPrimaryApplicationPort);
        registers.push_back(wire::kRegPrimaryApplicationAddress);
    }
    if (mDuty.timeoutReadable) {
        registers.push_back(wire::kRegHeartbeatTimeout);
    }
    return registers;
}

Heartbeat::Beat Heartbeat::judge(const std::vector<std::uint32_t>& values)
{
    if (mDuty.timeoutReadable && values.back() != 0) {
        mDuty.timeout = mDuty.bounds.believed(values.back());
    }
    if (mDuty.ownsControl && (values[0] & kOwningBits) == 0) {
        return linkLost(log::controlEnded());
    }
    if (mDuty.owner) {
        const PrimaryApplication owner{.port = values[1], .address = values[2]};
        if (owner != *mDuty.owner) {
            return linkLost(log::controlTaken(textOf(owner)));
        }
    }
    return Beat::Answered;
}

std::chrono::milliseconds Heartbeat::pauseAfter(Beat beat) const
{
    if (beat == Beat::Unanswered) {
        return kUnansweredPause;
    }
    const std::chrono::milliseconds wanted(mSettings.heartbeatInterval.load());
    return std::max(std::min(wanted, mDuty.timeout / kBeatsPerTimeout), kShortestInterval);
}

} // namespace gige::control
