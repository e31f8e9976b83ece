#include "StreamParameters.h"

#include <limits>
#include <utility>

using gige::stream::StreamReceiver;
using gige::stream::StreamSettings;
using gige::stream::StreamStatistics;

StreamParameters::StreamParameters(std::function<std::shared_ptr<StreamReceiver>()> openStream)
    : mOpenStream(std::move(openStream))
{
    addSetting("RequestTimeout", 1, mRequestTimeout);
    addSetting("FirstPacketTimeout", 0, mFirstPacketTimeout);
    addSetting("PacketTimeout", 0, mPacketTimeout);
    addSetting("DefaultImageTimeout", 0, mDefaultImageTimeout);
    addSetting("MaximumPendingResends", 0, mMaximumPendingResends);
    addSetting("MaximumResendRequestRetryByPacket", 0, mMaximumResendRequestRetryByPacket);
    mArray.addSetting(
        "PacketRing", {.minimum = 0, .maximum = 1}, [this] { return mPacketRing.load(); },
        [this](std::int64_t value) { mPacketRing = value; });
    addReadings();
}

gige::net::RingUse StreamParameters::ringUse() const
{
    return mPacketRing != 0 ? gige::net::RingUse::WhenItPays : gige::net::RingUse::Never;
}

StreamSettings StreamParameters::settings() const
{
    using std::chrono::milliseconds;
    return {.firstPacketTimeout = milliseconds(mFirstPacketTimeout),
            .packetTimeout = milliseconds(mPacketTimeout),
            .imageTimeout = milliseconds(mDefaultImageTimeout),
            .maximumPendingResends = static_cast<std::uint32_t>(mMaximumPendingResends),
            .maximumRequestsPerPacket =
                static_cast<std::uint32_t>(mMaximumResendRequestRetryByPacket)};
}

void StreamParameters::addSetting(const char* name, std::int64_t minimum, Setting& setting)
{
    // Hosts set these as signed 32-bit numbers.
    constexpr std::int64_t kMaximum = std::numeric_limits<std::int32_t>::max();
    mArray.addSetting(
        name, {.minimum = minimum, .maximum = kMaximum}, [&setting] { return setting.load(); },
        [this, &setting](std::int64_t value) {
            setting = value;
            if (const auto stream = mOpenStream()) {
                stream->setSettings(settings());
            }
        });
}

void StreamParameters::addReadings()
{
    addReading("BlocksReceived", &StreamStatistics::blocksReceived);
    addReading("BlocksFailed", &StreamStatistics::blocksFailed);
    addReading("BlocksDropped", &StreamStatistics::blocksDropped);
    addReading("PacketsReceived", &StreamStatistics::packetsReceived);
    addReading("PacketsMissing", &StreamStatistics::packetsMissing);
    addReading("PacketsResent", &StreamStatistics::packetsResent);
    addReading("PacketsDuplicated", &StreamStatistics::packetsDuplicated);
    addReading("PacketsIgnored", &StreamStatistics::packetsIgnored);
    addReading("BytesReceived", &StreamStatistics::bytesReceived);
    mArray.addReading("SocketBufferSize", [this] {
        const auto stream = mOpenStream();
        return stream ? static_cast<std::int64_t>(stream->socketBufferSize()) : 0;
    });
    mArray.addReading("PacketRingInUse", [this] {
        const auto stream = mOpenStream();
        return stream && stream->isRingInUse() ? 1 : 0;
    });
}

void StreamParameters::addReading(const char* name, std::uint64_t StreamStatistics::*counter)
{
    mArray.addReading(name, [this, counter] {
        const auto stream = mOpenStream();
        return stream ? static_cast<std::int64_t>(stream->statistics().*counter) : 0;
    });
}
