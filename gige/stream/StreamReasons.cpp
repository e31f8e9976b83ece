#include "StreamReasons.h"

namespace gige::stream
{

namespace
{

std::int64_t number(std::uint64_t count)
{
    return static_cast<std::int64_t>(count);
}

void appendPlace(log::Reason& reason, const log::LostByTenth& lost)
{
    if (log::sumOf(lost) >= log::kFewLosses) {
        const log::Reason place = log::lossPlace(lost);
        reason.text << ", " << place.text;
        reason.advice = place.advice;
    }
}

log::Reason incomplete(const StreamPeriod& period)
{
    log::Reason reason =
        log::incompletePictures(number(period.counted.blocksFailed - period.blocksTooLong),
                                number(period.counted.packetsMissing));
    appendPlace(reason, period.lost);
    switch (period.resends) {
    case Resends::Off:
        reason.text << "; none was asked for again";
        reason.advice << "; switch resends on (MaximumPendingResends)";
        break;
    case Resends::NotByDevice:
        reason.text << "; " << log::noResends().text;
        break;
    case Resends::On:
        reason.text << "; they were asked for again in vain";
        break;
    }
    return reason;
}

log::Reason healed(const StreamPeriod& period)
{
    log::Reason reason = log::lostAndCame(number(period.counted.packetsResent));
    appendPlace(reason, period.lost);
    return reason;
}

} // namespace

StreamReasons::StreamReasons(const StreamPeriod& period)
{
    const StreamStatistics& counted = period.counted;
    if (counted.blocksFailed > period.blocksTooLong) {
        add(incomplete(period));
    } else if (counted.packetsResent > 0) {
        add(healed(period));
    }
    if (period.blocksTooLong > 0) {
        add(log::longPictures(number(period.blocksTooLong)));
    }
    if (counted.blocksDropped > 0) {
        add(log::noBuffer(number(counted.blocksDropped)));
    }
    if (mCount > 0 && period.load >= log::kFullCore) {
        add(log::slowProcessor(period.load, number(period.packetSize), period.isRingInUse));
    }
}

} // namespace gige::stream
