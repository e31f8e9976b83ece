#ifndef TELVO_GIGE_STREAM_STREAMREPORT_H
#define TELVO_GIGE_STREAM_STREAMREPORT_H

#include "Ipv4Address.h"
#include "StreamReasons.h"
#include "StreamSettings.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace gige::stream
{

/// Tells the stack's log of what a stream lacks, once a second while packets come. For the
/// receiving thread, which asks it for the time with each receive; all else it does once a second.
class StreamReport
{
  public:
    static constexpr std::chrono::seconds kPeriod{1};

    /// What the stream has counted since it was opened, and how it is now.
    using Totals = StreamPeriod;

    explicit StreamReport(net::Ipv4Address device);

    /// Some packets were received.
    void notePackets(Time now)
    {
        mSilentAt = Time::max();
        if (mEnd == Time::max()) {
            begin(now);
        }
    }
    /// The device was asked for pictures: packets of them are to come.
    void expectPackets(Time now) { mSilentAt = now + kPeriod; }
    void expectNoPackets() { mSilentAt = Time::max(); }
    /// Pictures that find no buffer are nobody's loss until there are some in the queue again.
    void setFed(bool fed) { mIsFed = fed; }

    /// When there is something to be told; Time::max(): nothing.
    Time nextTime() const { return std::min(mEnd, mSilentAt); }
    /// At that time, and at any other to tell at once of what there was.
    void tell(const Totals& totals, Time now);

  private:
    void begin(Time now);
    void tellRing(bool isInUse);
    StreamPeriod since(const Totals& totals, Time now) const;

    const std::string mDevice; // its address
    Time mBegin;
    Time mEnd = Time::max();                 // of the period; max: none has begun
    Time mSilentAt = Time::max();            // when to tell that no packet came
    std::chrono::nanoseconds mThreadTime{0}; // when the period began
    Totals mTold;
    bool mIsFed = false;
};

} // namespace gige::stream

#endif
