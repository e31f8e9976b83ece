#ifndef TELVO_GIGE_PV_STREAMPARAMETERS_H
#define TELVO_GIGE_PV_STREAMPARAMETERS_H

#include "HostParameters.h"
#include "RingUse.h"
#include "StreamReceiver.h"
#include "StreamSettings.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

/// A stream's parameters: the settings, which outlive opening and closing, and the readings of the
/// open stream, 0 without one. Threads: any; each setting is atomic.
class StreamParameters
{
  public:
    /// @param openStream  the receiver, null while the stream is closed
    explicit StreamParameters(
        std::function<std::shared_ptr<gige::stream::StreamReceiver>()> openStream);

    PvGenParameterArray& array() { return mArray; }
    gige::stream::StreamSettings settings() const;
    /// Counts when the stream is opened.
    gige::net::RingUse ringUse() const;
    std::chrono::milliseconds requestTimeout() const
    {
        return std::chrono::milliseconds(mRequestTimeout);
    }

  private:
    using Setting = std::atomic<std::int64_t>;

    void addSetting(const char* name, std::int64_t minimum, Setting& setting);
    void addReadings();
    void addReading(const char* name, std::uint64_t gige::stream::StreamStatistics::*counter);

    std::function<std::shared_ptr<gige::stream::StreamReceiver>()> mOpenStream;
    Setting mRequestTimeout{1100};
    Setting mFirstPacketTimeout{0};
    Setting mPacketTimeout{1000};
    Setting mDefaultImageTimeout{1100};
    Setting mMaximumPendingResends{0};
    Setting mMaximumResendRequestRetryByPacket{3};
    Setting mPacketRing{1};
    HostParameters mArray;
};

#endif
