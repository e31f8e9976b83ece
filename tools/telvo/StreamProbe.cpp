#include "StreamProbe.h"

#include "CancelFlag.h"
#include "ConnectionSettings.h"

#include "PvDevice.h"
#include "PvPipeline.h"
#include "PvStream.h"

#include <algorithm>
#include <set>
#include <span>

namespace telvo
{

namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kLossTime{500};   // without resends
constexpr std::chrono::milliseconds kProbeTime{1000}; // with them
constexpr std::int64_t kPacketHeaders = 36;           // bytes, of IP, UDP and the stream
constexpr std::uint32_t kFrameWait = 100; // milliseconds for a frame; then Ctrl-C is looked for
constexpr std::uint32_t kDefaultPacket = 1440; // bytes
constexpr std::uint32_t kBuffers = 16;

std::int64_t integerOf(PvGenParameterArray& array, const char* name)
{
    std::int64_t value = 0;
    if (auto* const feature = dynamic_cast<PvGenInteger*>(array.Get(name))) {
        (void)feature->GetValue(value);
    }
    return value;
}

void setInteger(PvGenParameterArray& array, const char* name, std::int64_t value)
{
    if (auto* const feature = dynamic_cast<PvGenInteger*>(array.Get(name))) {
        (void)feature->SetValue(value);
    }
}

void execute(PvGenParameterArray& array, const char* name)
{
    if (auto* const feature = dynamic_cast<PvGenCommand*>(array.Get(name))) {
        (void)feature->Execute();
    }
}

/// The camera sends what its sensor sees, while this lives.
class LiveSource
{
  public:
    explicit LiveSource(PvGenParameterArray& features)
        : mFeatures(features), mSource(dynamic_cast<PvGenEnum*>(features.Get("AcquisitionSource")))
    {
        if (mSource != nullptr) {
            (void)mSource->GetValue(mBefore);
            (void)mSource->SetValue("Live");
        }
        execute(mFeatures, "AcquisitionStart");
    }
    ~LiveSource()
    {
        execute(mFeatures, "AcquisitionStop");
        if (mSource != nullptr) {
            (void)mSource->SetValue(mBefore);
        }
    }
    LiveSource(const LiveSource&) = delete;
    LiveSource& operator=(const LiveSource&) = delete;

  private:
    PvGenParameterArray& mFeatures;
    PvGenEnum* mSource;
    PvString mBefore;
};

/// A device and its stream, connected for the probe.
class Probe
{
  public:
    StreamProbe run(const CameraAddress& camera);

  private:
    std::string open(const CameraAddress& camera);
    template <typename Look>
    void receive(PvPipeline& pipeline, std::chrono::milliseconds time, const Look& look);
    LostByTenth lookForLosses(PvPipeline& pipeline, std::int64_t packetSize);
    void countWithResends(PvPipeline& pipeline, StreamProbe& result);
    StreamProbe counters();

    PvDevice mDevice;
    PvStream mStream;
};

std::string Probe::open(const CameraAddress& camera)
{
    const PvString ip(camera.ip);
    if (const PvResult connected = mDevice.Connect(ip, PvAccessType::Exclusive);
        !connected.IsOK()) {
        return std::string("cannot connect: ") + connected.GetCodeString().GetAscii();
    }
    (void)mDevice.NegotiatePacketSize(0, kDefaultPacket);
    setInteger(*mStream.GetParameters(), "MaximumPendingResends", 0);
    if (!mStream.Open(ip, 0, 0, "").IsOK()) {
        return "cannot open a stream: no socket is to be had";
    }
    (void)mDevice.SetStreamDestination(mStream.GetLocalIPAddress(), mStream.GetLocalPort(), 0);
    return "";
}

/// @param look  called with each picture and whether it is whole
template <typename Look>
void Probe::receive(PvPipeline& pipeline, std::chrono::milliseconds time, const Look& look)
{
    const CancelFlag cancel;
    for (const auto end = Clock::now() + time; Clock::now() < end;) {
        cancel.check();
        PvBuffer* buffer = nullptr;
        PvResult operation;
        if (pipeline.RetrieveNextBuffer(&buffer, kFrameWait, &operation).IsOK()) {
            look(*buffer, operation.IsOK());
            (void)pipeline.ReleaseBuffer(buffer);
        }
    }
}

LostByTenth Probe::lookForLosses(PvPipeline& pipeline, std::int64_t packetSize)
{
    LossPlaces places(
        static_cast<std::size_t>(std::max<std::int64_t>(1, packetSize - kPacketHeaders)));
    std::set<const PvBuffer*> marked;
    receive(pipeline, kLossTime, [&](PvBuffer& buffer, bool isWhole) {
        const std::span<std::uint8_t> bytes(buffer.GetDataPointer(), buffer.GetSize());
        if (!isWhole && marked.contains(&buffer)) {
            places.count(bytes);
        }
        places.mark(bytes);
        marked.insert(&buffer);
    });
    return places.lost();
}

StreamProbe Probe::counters()
{
    PvGenParameterArray& counters = *mStream.GetParameters();
    StreamProbe result;
    result.framesWhole = integerOf(counters, "BlocksReceived");
    result.framesFailed = integerOf(counters, "BlocksFailed");
    result.framesDropped = integerOf(counters, "BlocksDropped");
    result.packets = integerOf(counters, "PacketsReceived");
    result.packetsMissing = integerOf(counters, "PacketsMissing");
    result.packetsResent = integerOf(counters, "PacketsResent");
    return result;
}

void Probe::countWithResends(PvPipeline& pipeline, StreamProbe& result)
{
    setInteger(*mStream.GetParameters(), "MaximumPendingResends",
               kUsualConnection.maximumPendingResends);
    const StreamProbe before = counters();
    const ProcessorTimes timesBefore = processorTimes();
    const auto start = Clock::now();
    receive(pipeline, kProbeTime, [](const PvBuffer&, bool) {});
    const StreamProbe after = counters();
    result.time = Clock::now() - start;
    result.load = loadBetween(timesBefore, processorTimes(), result.time);
    result.isRingInUse = integerOf(*mStream.GetParameters(), "PacketRingInUse") != 0;
    for (const auto counter :
         {&StreamProbe::framesWhole, &StreamProbe::framesFailed, &StreamProbe::framesDropped,
          &StreamProbe::packets, &StreamProbe::packetsMissing, &StreamProbe::packetsResent}) {
        result.*counter = after.*counter - before.*counter;
    }
}

StreamProbe Probe::run(const CameraAddress& camera)
{
    StreamProbe result{.problem = open(camera)};
    if (!result.problem.empty()) {
        return result;
    }
    PvGenParameterArray& features = *mDevice.GetGenParameters();
    result.packetSize = integerOf(features, "GevSCPSPacketSize");
    result.frameRate = integerOf(features, "AcquisitionFrameRateRaw");
    result.frameSize = integerOf(features, "PayloadSize");
    {
        PvPipeline pipeline(&mStream);
        pipeline.SetBufferSize(static_cast<std::uint32_t>(result.frameSize));
        (void)pipeline.SetBufferCount(kBuffers);
        (void)pipeline.Start();
        const LiveSource source(features);
        result.lost = lookForLosses(pipeline, result.packetSize);
        countWithResends(pipeline, result);
    }
    (void)mDevice.ResetStreamDestination(0);
    return result;
}

} // namespace

StreamProbe probeStream(const CameraAddress& camera)
{
    return Probe().run(camera);
}

} // namespace telvo
