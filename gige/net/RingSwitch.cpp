#include "RingSwitch.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace gige::net
{

namespace
{

using Clock = RingTrial::Clock;

constexpr std::size_t kIpUdpHeaders = 28; // bytes
/// Receives in which a packet of the socket's is looked for in the ring.
constexpr std::size_t kMostProofs = 100;
/// Between giving the flow back to the socket and closing the ring: longer than a packet is on its
/// way through the kernel.
constexpr std::chrono::milliseconds kLeavingTime{10};

struct Tally {
    std::size_t single = 0;
    std::size_t joined = 0;
    std::size_t longest = 0;
};

Tally tallyOf(std::span<const DatagramRun> runs, Ipv4Address source)
{
    Tally tally;
    for (const DatagramRun& run : runs) {
        if (run.source.address == source) {
            (run.isJoined() ? tally.joined : tally.single) += 1;
            tally.longest = std::max(tally.longest, run.segmentSize);
        }
    }
    return tally;
}

} // namespace

RingSwitch::~RingSwitch()
{
    if (isInUse()) {
        detachFilter(mSocket);
    }
}

void RingSwitch::allow(RingUse use, const Flow& flow)
{
    mTrial = RingTrial(use);
    mFlow = flow;
}

void RingSwitch::noteReceived(std::span<const DatagramRun> runs)
{
    switch (mState) {
    case State::Closed: {
        const Tally tally = tallyOf(runs, mFlow.source);
        if (mTrial.noteReceived(tally.single, tally.joined, tally.longest, Clock::now())) {
            openBeside();
        }
        break;
    }
    case State::Changing:
        endChange();
        break;
    case State::Proving:
        prove(runs);
        break;
    case State::CatchingUp:
        markLast(runs);
        break;
    case State::InUse: {
        const Tally tally = tallyOf(runs, mFlow.source);
        mTrial.noteAstray(tally.single + tally.joined);
        break;
    }
    case State::Leaving:
        break;
    }
}

std::size_t RingSwitch::take(std::span<DatagramRun> runs)
{
    if (!isInUse()) {
        return 0;
    }
    if (mState == State::CatchingUp) {
        catchUp();
    }
    const std::size_t count = mRing->take(runs);
    const auto now = Clock::now();
    if (count > 0) {
        mTrial.noteRing(tallyOf(runs.first(count), mFlow.source).longest, now);
    } else if (mState == State::InUse && mTrial.isUseless(now)) {
        leave();
    } else if (mState == State::Leaving && now - mLeft > kLeavingTime) {
        closeBeside();
    }
    return count;
}

Timeout RingSwitch::limit(Timeout timeout)
{
    constexpr std::chrono::microseconds kLonger = kRingSilence + kLeavingTime;
    return timeout ? std::min(*timeout, kLonger) : kLonger;
}

void RingSwitch::openBeside()
{
    try {
        mChange = std::async(std::launch::async, [flow = mFlow, longest = longestPacket()] {
            return PacketRing::open(flow, longest);
        });
        mState = State::Changing;
    } catch (const std::system_error&) { // no thread to be had
        mTrial = RingTrial(RingUse::Never);
    }
}

void RingSwitch::closeBeside()
{
    mTrial.noteEnded(Clock::now());
    mState = State::Closed;
    try {
        mChange = std::async(std::launch::async,
                             [ring = std::move(mRing)]() mutable -> std::unique_ptr<PacketRing> {
                                 ring.reset();
                                 return nullptr;
                             });
        mState = State::Changing;
    } catch (const std::system_error&) { // closed here, then
        mRing.reset();
    }
}

void RingSwitch::endChange()
{
    if (mChange.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
        return;
    }
    mRing = mChange.get();
    mState = mRing ? State::Proving : State::Closed;
    mProofs = 0;
}

void RingSwitch::prove(std::span<const DatagramRun> runs)
{
    for (std::size_t i = runs.size(); i-- > 0;) {
        const DatagramRun& run = runs[i];
        if (isOfFlow(run) && !run.isJoined() && run.bytes.size() == mTrial.longest()) {
            if (mRing->dropThrough(DatagramMark(run))) {
                begin();
                markLast(runs.subspan(i));
                return;
            }
            break;
        }
    }
    mRing->dropAll();
    if (++mProofs == kMostProofs) {
        mTrial.noteFailed(Clock::now());
        closeBeside();
    }
}

void RingSwitch::begin()
{
    mLast.reset();
    if (attachFilter(mSocket, FlowFilter::AllButThatFlow, mFlow, longestPacket())) {
        mState = State::CatchingUp;
    } else {
        mTrial = RingTrial(RingUse::Never);
        closeBeside();
    }
}

void RingSwitch::catchUp()
{
    if (mLast) {
        mRing->dropThrough(*mLast);
    }
    mTrial.noteBegun(Clock::now());
    mState = State::InUse;
}

void RingSwitch::leave()
{
    detachFilter(mSocket);
    mLeft = Clock::now();
    mState = State::Leaving;
}

void RingSwitch::markLast(std::span<const DatagramRun> runs)
{
    for (const DatagramRun& run : runs) {
        if (isOfFlow(run) && !run.isJoined()) {
            mLast.emplace(run);
        }
    }
}

std::size_t RingSwitch::longestPacket() const
{
    return mTrial.longest() + kIpUdpHeaders;
}

} // namespace gige::net
