#include "StreamProbe.h"

#include "CancelFlag.h"
#include "ConnectionSettings.h"

#include "PvDevice.h"
#include "PvPipeline.h"
#include "PvStream.h"

#include <algorithm>

namespace telvo
{

namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kProbeTime{1500};
constexpr std::uint32_t kWait = 100; // milliseconds for a frame; then Ctrl-C is looked for
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
    void receive();
    void count(StreamProbe& result);

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
    setInteger(*mStream.GetParameters(), "MaximumPendingResends",
               kUsualConnection.maximumPendingResends);
    if (!mStream.Open(ip, 0, 0, "").IsOK()) {
        return "cannot open a stream: no socket is to be had";
    }
    (void)mDevice.SetStreamDestination(mStream.GetLocalIPAddress(), mStream.GetLocalPort(), 0);
    return "";
}

void Probe::receive()
{
    PvPipeline pipeline(&mStream);
    pipeline.SetBufferSize(
        static_cast<std::uint32_t>(integerOf(*mDevice.GetGenParameters(), "PayloadSize")));
    (void)pipeline.SetBufferCount(kBuffers);
    (void)pipeline.Start();
    const LiveSource source(*mDevice.GetGenParameters());
    const CancelFlag cancel;
    for (const auto end = Clock::now() + kProbeTime; Clock::now() < end;) {
        cancel.check();
        PvBuffer* buffer = nullptr;
        PvResult operation;
        if (pipeline.RetrieveNextBuffer(&buffer, kWait, &operation).IsOK()) {
            (void)pipeline.ReleaseBuffer(buffer);
        }
    }
}

void Probe::count(StreamProbe& result)
{
    PvGenParameterArray& counters = *mStream.GetParameters();
    result.framesWhole = integerOf(counters, "BlocksReceived");
    result.framesFailed = integerOf(counters, "BlocksFailed");
    result.framesDropped = integerOf(counters, "BlocksDropped");
    result.packets = integerOf(counters, "PacketsReceived");
    result.packetsMissing = integerOf(counters, "PacketsMissing");
    result.packetsResent = integerOf(counters, "PacketsResent");
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
    const auto start = Clock::now();
    receive();
    result.time = Clock::now() - start;
    count(result);
    (void)mDevice.ResetStreamDestination(0);
    return result;
}

} // namespace

StreamProbe probeStream(const CameraAddress& camera)
{
    return Probe().run(camera);
}

} // namespace telvo
