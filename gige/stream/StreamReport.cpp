#include "StreamReport.h"

#include "StackLog.h"
#include "ThreadTime.h"

namespace gige::stream
{

namespace
{

using std::chrono::duration;

/// A load shows only over a while.
constexpr std::chrono::milliseconds kShortestLoad{500};

StreamStatistics difference(const StreamStatistics& now, const StreamStatistics& before)
{
    return {.blocksFailed = now.blocksFailed - before.blocksFailed,
            .blocksDropped = now.blocksDropped - before.blocksDropped,
            .packetsMissing = now.packetsMissing - before.packetsMissing,
            .packetsResent = now.packetsResent - before.packetsResent};
}

log::LostByTenth difference(log::LostByTenth now, const log::LostByTenth& before)
{
    for (std::size_t i = 0; i < now.size(); ++i) {
        now[i] -= before[i];
    }
    return now;
}

} // namespace

StreamReport::StreamReport(net::Ipv4Address device) : mDevice(net::toText(device)) {}

void StreamReport::begin(Time now)
{
    mBegin = now;
    mEnd = now + kPeriod;
    mThreadTime = net::threadTime();
}

void StreamReport::tell(const Totals& totals, Time now)
{
    if (now >= mSilentAt) {
        mSilentAt = Time::max();
        log::say(mDevice, log::noPackets());
    }
    tellRing(totals.isRingInUse);
    const StreamReasons reasons(since(totals, now));
    for (const log::Reason& reason : reasons.all()) {
        log::say(mDevice, reason);
    }
    mTold = totals;
    mEnd = Time::max();
}

void StreamReport::tellRing(bool isInUse)
{
    if (isInUse != mTold.isRingInUse) {
        log::say(mDevice, isInUse ? log::ringTaken() : log::ringGivenUp());
    }
}

StreamPeriod StreamReport::since(const Totals& totals, Time now) const
{
    StreamPeriod period = totals;
    period.counted = difference(totals.counted, mTold.counted);
    period.blocksTooLong -= mTold.blocksTooLong;
    period.lost = difference(totals.lost, mTold.lost);
    if (!mIsFed) {
        period.counted.blocksDropped = 0;
    }
    if (mEnd != Time::max() && now - mBegin >= kShortestLoad) {
        period.load =
            duration<double>(net::threadTime() - mThreadTime) / duration<double>(now - mBegin);
    }
    return period;
}

} // namespace gige::stream
