#include "ResendPlanner.h"

#include <algorithm>

namespace gige::stream
{

namespace
{

/// Losses of one block that are followed; what a broken packet id makes of it stays bounded.
constexpr std::size_t kMaxLosses = 65536;

/// The first requests soon, since blocks wait for them; the later ones with patience.
std::chrono::milliseconds pauseAfter(std::uint32_t requests)
{
    constexpr std::uint32_t kMaxDoublings = 8;
    return kResendPause * (1 << std::min(2 * (requests - 1), kMaxDoublings));
}

void append(std::vector<PacketRange>& ranges, bool extendsLast, std::uint32_t packetId)
{
    if (extendsLast) {
        ranges.back().last = packetId;
    } else {
        ranges.push_back({packetId, packetId});
    }
}

} // namespace

void ResendPlanner::begin()
{
    mLosses.clear();
    mSearchedTo = 0;
    mGapEnd = 0;
    mGapSince.reset();
    mGivenUpTo = 0;
    mTailSearched = false;
    mAsked = false;
}

std::uint32_t ResendPlanner::forgetArrived(const OpenBlock& block)
{
    std::uint32_t arrived = 0;
    std::erase_if(mLosses, [&](const Loss& loss) {
        const bool there = block.has(loss.packetId);
        arrived += there && loss.requests > 0 ? 1 : 0;
        return there;
    });
    return arrived;
}

void ResendPlanner::plan(const OpenBlock& block, const StreamSettings& settings, bool cutOff,
                         std::uint32_t budget, Time now, std::vector<PacketRange>& ranges)
{
    if (block.isTooLong()) {
        return; // fails anyway
    }
    findGaps(block, now);
    findTail(block, cutOff, now);
    std::optional<std::uint32_t> previous;
    for (Loss& loss : mLosses) {
        if (takeTurn(loss, settings, budget, now)) {
            append(ranges, previous && *previous + 1 == loss.packetId, loss.packetId);
            previous = loss.packetId;
            mAsked = true;
        }
    }
}

void ResendPlanner::giveUp(std::uint32_t packetId)
{
    const auto loss = std::ranges::find(mLosses, packetId, &Loss::packetId);
    if (loss != mLosses.end()) {
        loss->givenUp = true;
    }
}

void ResendPlanner::giveUpThrough(std::uint32_t packetId)
{
    mGivenUpTo = std::max(mGivenUpTo, packetId + 1);
    for (Loss& loss : mLosses) {
        loss.givenUp = loss.givenUp || loss.packetId < mGivenUpTo;
    }
}

std::uint32_t ResendPlanner::pending() const
{
    return static_cast<std::uint32_t>(std::ranges::count_if(
        mLosses, [](const Loss& loss) { return loss.requests > 0 && !loss.givenUp; }));
}

bool ResendPlanner::hasGivenUp() const
{
    return std::ranges::any_of(mLosses, &Loss::givenUp);
}

std::optional<Time> ResendPlanner::nextTime(const OpenBlock& block) const
{
    std::optional<Time> next;
    const auto consider = [&next](Time time) { next = next ? std::min(*next, time) : time; };
    if (block.isTooLong()) {
        return next;
    }
    if (mGapSince) {
        consider(*mGapSince + kReorderTime);
    }
    if (!mTailSearched && block.highestId() > 0 && block.expectedTrailerId() != 0) {
        consider(block.lastPacketTime() + kTailTime);
    }
    for (const Loss& loss : mLosses) {
        if (loss.requests > 0 && !loss.givenUp) {
            consider(loss.due);
        }
    }
    return next;
}

/// A gap is a loss if the packets behind it were there a reorder time ago.
void ResendPlanner::findGaps(const OpenBlock& block, Time now)
{
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
    if (mTailSearched || !(cutOff || late)) {
        return;
    }
    const std::uint32_t trailer = block.expectedTrailerId();
    addLosses(block, trailer == 0 ? block.highestId() : trailer + 1);
    mTailSearched = trailer != 0;
}

void ResendPlanner::addLosses(const OpenBlock& block, std::uint32_t end)
{
    for (; mSearchedTo < end && mLosses.size() < kMaxLosses; ++mSearchedTo) {
        if (!block.has(mSearchedTo)) {
            mLosses.push_back({.packetId = mSearchedTo, .givenUp = mSearchedTo < mGivenUpTo});
        }
    }
}

/// Whether to ask for this packet now; counts the request.
bool ResendPlanner::takeTurn(Loss& loss, const StreamSettings& settings, std::uint32_t& budget,
                             Time now)
{
    const bool first = loss.requests == 0;
    if (loss.givenUp || (first ? budget == 0 : now < loss.due)) {
        return false;
    }
    if (loss.requests >= settings.maximumRequestsPerPacket) {
        loss.givenUp = true;
        return false;
    }
    budget -= first ? 1 : 0;
    ++loss.requests;
    loss.due = now + pauseAfter(loss.requests);
    return true;
}

} // namespace gige::stream
