#include "ResendPlanner.h"

#include <algorithm>

namespace gige::stream
{

namespace
{

/// The first requests soon, since blocks wait for them; the later ones with patience.
std::chrono::milliseconds pauseAfter(std::uint32_t requests)
{
    constexpr std::uint32_t kMaxDoublings = 8;
    return kResendPause * (1 << std::min(2 * (requests - 1), kMaxDoublings));
}

void append(std::vector<PacketRange>& ranges, const PacketRange& range)
{
    if (!ranges.empty() && ranges.back().last + 1 == range.first) {
        ranges.back().last = range.last;
    } else {
        ranges.push_back(range);
    }
}

} // namespace

void ResendPlanner::begin()
{
    stop();
    mSearchedTo = 0;
    mAskedTo = 0;
    mGapEnd = 0;
    mGapSince.reset();
    mDue = Time::max();
    mGivenUpTo = 0;
    mTailSearched = false;
    mAsked = false;
}

void ResendPlanner::stop()
{
    mLosses.clear();
    mPackets = {};
}

bool ResendPlanner::noteArrived(std::uint32_t packetId)
{
    // Nearly every packet: it was not missed.
    const std::size_t index = lossFrom(packetId);
    if (index == mLosses.size() || mLosses[index].first > packetId) {
        return false;
    }
    const bool asked = mLosses[index].requests > 0;
    remove(index, packetId);
    return asked;
}

void ResendPlanner::plan(const OpenBlock& block, const StreamSettings& settings, bool cutOff,
                         std::uint32_t budget, Time now, std::vector<PacketRange>& ranges)
{
    ranges.clear();
    if (block.isTooLong()) {
        return; // fails anyway
    }
    findGaps(block, now);
    findTail(block, cutOff, now);
    askAgain(settings, now, ranges);
    askNew(settings, budget, now, ranges);
}

void ResendPlanner::giveUp(std::uint32_t packetId)
{
    const std::size_t index = lossFrom(packetId);
    if (index == mLosses.size() || mLosses[index].first > packetId) {
        return;
    }
    // What lies behind first, so that the index stays right.
    partBefore(index, packetId + 1);
    setState(mLosses[partBefore(index, packetId) ? index + 1 : index], State::GivenUp);
}

void ResendPlanner::giveUpThrough(std::uint32_t packetId)
{
    const std::uint32_t end = std::max(mGivenUpTo, packetId + 1);
    for (std::size_t i = lossFrom(mGivenUpTo); i < mLosses.size() && mLosses[i].first < end; ++i) {
        partBefore(i, end);
        setState(mLosses[i], State::GivenUp);
    }
    // Counts for losses that show only later, too.
    mGivenUpTo = end;
}

std::optional<Time> ResendPlanner::nextTime(const OpenBlock& block) const
{
    std::optional<Time> next;
    const auto consider = [&next](Time time) { next = next ? std::min(*next, time) : time; };
    if (block.isTooLong()) {
        return next;
    }
    if (!isFull() && mGapSince) {
        consider(*mGapSince + kReorderTime);
    }
    if (!isFull() && !mTailSearched && block.highestId() > 0 && block.expectedTrailerId() != 0) {
        consider(block.lastPacketTime() + kTailTime);
    }
    if (pending() > 0) {
        consider(mDue);
    }
    return next;
}

/// A gap is a loss if the packets behind it were there a reorder time ago.
void ResendPlanner::findGaps(const OpenBlock& block, Time now)
{
    if (isFull()) {
        return;
    }
    if (mGapSince && now - *mGapSince >= kReorderTime) {
        addLosses(block, mGapEnd);
        mGapSince.reset();
    }
    if (!mGapSince && block.hasGaps() && block.highestId() > mSearchedTo) {
        mGapEnd = block.highestId();
        mGapSince = now;
    }
}

void ResendPlanner::findTail(const OpenBlock& block, bool cutOff, Time now)
{
    // Some devices send the leader long before the data, so it alone is no block cut off.
    const bool late = block.highestId() > 0 && now - block.lastPacketTime() >= kTailTime;
    if (mTailSearched || isFull() || !(cutOff || late)) {
        return;
    }
    const std::uint32_t trailer = block.expectedTrailerId();
    addLosses(block, trailer == 0 ? block.highestId() : trailer + 1);
    mTailSearched = trailer != 0 && mSearchedTo > trailer;
}

void ResendPlanner::addLosses(const OpenBlock& block, std::uint32_t end)
{
    while (mSearchedTo < end && !isFull()) {
        const std::uint32_t first = block.findMissing(mSearchedTo, end);
        mSearchedTo = block.findReceived(first, end);
        // Below mGivenUpTo the device has nothing left to send.
        const std::uint32_t here = std::clamp(mGivenUpTo, first, mSearchedTo);
        addLoss(first, here, State::GivenUp);
        addLoss(here, mSearchedTo, State::Found);
    }
}

void ResendPlanner::addLoss(std::uint32_t first, std::uint32_t end, State state)
{
    if (first == end) {
        return;
    }
    packetsIn(state) += end - first;
    Loss* const before = mLosses.empty() ? nullptr : &mLosses.back();
    // One that is asked for already keeps its own count and time.
    if (before != nullptr && before->last + 1 == first && before->state == state &&
        before->requests == 0) {
        before->last = end - 1;
    } else {
        mLosses.push_back({.first = first, .last = end - 1, .state = state});
    }
}

void ResendPlanner::askAgain(const StreamSettings& settings, Time now,
                             std::vector<PacketRange>& ranges)
{
    // With every packet it comes here: the losses are walked through only when one is due.
    if (now < mDue) {
        return;
    }
    mDue = Time::max();
    for (Loss& loss : mLosses) {
        if (loss.state == State::Asked && now >= loss.due) {
            if (loss.requests < settings.maximumRequestsPerPacket) {
                ask(loss, now, ranges);
            } else {
                setState(loss, State::GivenUp);
            }
        }
        if (loss.state == State::Asked) {
            mDue = std::min(mDue, loss.due);
        }
    }
}

/// In the order of their ids, so that those asked for lie before those that are not.
void ResendPlanner::askNew(const StreamSettings& settings, std::uint32_t budget, Time now,
                           std::vector<PacketRange>& ranges)
{
    if (!wantsBudget()) {
        return;
    }
    for (std::size_t i = lossFrom(mAskedTo); i < mLosses.size() && budget > 0; ++i) {
        if (mLosses[i].state == State::Found) {
            if (settings.maximumRequestsPerPacket == 0) {
                setState(mLosses[i], State::GivenUp);
            } else if (mLosses[i].size() <= budget ||
                       (!isFull() && partBefore(i, mLosses[i].first + budget))) {
                budget -= mLosses[i].size();
                ask(mLosses[i], now, ranges);
            } else {
                return; // until there is room to part it
            }
        }
        mAskedTo = mLosses[i].last + 1;
    }
}

void ResendPlanner::ask(Loss& loss, Time now, std::vector<PacketRange>& ranges)
{
    append(ranges, {loss.first, loss.last});
    setState(loss, State::Asked);
    ++loss.requests;
    loss.due = now + pauseAfter(loss.requests);
    mDue = std::min(mDue, loss.due);
    mAsked = true;
}

/// The first loss that does not end before this packet.
std::size_t ResendPlanner::lossFrom(std::uint32_t packetId) const
{
    if (mLosses.empty() || mLosses.back().last < packetId) {
        return mLosses.size(); // as nearly always
    }
    const auto loss = std::ranges::lower_bound(mLosses, packetId, {}, &Loss::last);
    return static_cast<std::size_t>(loss - mLosses.begin());
}

/// Makes two losses of one, the second of which begins with the packet. @return false: it begins
/// there already, ends before, or there are too many losses
bool ResendPlanner::partBefore(std::size_t index, std::uint32_t packetId)
{
    Loss& loss = mLosses[index];
    if (packetId <= loss.first || packetId > loss.last || mLosses.size() >= kMaxLosses) {
        return false;
    }
    Loss second = loss;
    second.first = packetId;
    loss.last = packetId - 1;
    mLosses.insert(mLosses.begin() + static_cast<std::ptrdiff_t>(index) + 1, second);
    return true;
}

/// Takes one packet out of a loss.
void ResendPlanner::remove(std::size_t index, std::uint32_t packetId)
{
    if (packetId > mLosses[index].first && packetId < mLosses[index].last &&
        !partBefore(index, packetId)) {
        return setState(mLosses[index], State::GivenUp); // too many to follow each
    }
    Loss& loss = mLosses[packetId <= mLosses[index].last ? index : index + 1];
    --packetsIn(loss.state);
    if (loss.first == loss.last) {
        mLosses.erase(mLosses.begin() + (&loss - mLosses.data()));
    } else if (packetId == loss.first) {
        ++loss.first;
    } else {
        --loss.last;
    }
}

void ResendPlanner::setState(Loss& loss, State state)
{
    packetsIn(loss.state) -= loss.size();
    packetsIn(state) += loss.size();
    loss.state = state;
}

} // namespace gige::stream
