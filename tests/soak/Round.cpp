#include "Round.h"

#include "Recording.h"

#include <atomic>
#include <string>

namespace
{

using camera::VirtualCamera;

constexpr std::uint32_t kRecordedFrames = 200;
constexpr int kLivePictures = 20;
constexpr std::int32_t kCamera = 1;

// Longer than any of these calls may take, on a busy machine, too.
constexpr std::chrono::seconds kConnectLimit = 35s;
constexpr std::chrono::seconds kDisconnectLimit = 5s;
constexpr std::chrono::seconds kCallLimit = 60s;
constexpr std::chrono::seconds kReadoutLimit = 200s;
constexpr std::chrono::seconds kPictureLimit = 30s;
constexpr std::chrono::seconds kLinkLimit = 30s;

std::atomic<int> linkLosses{0}; // the library's callback knows no object

void require(bool holds, const std::string& what)
{
    if (!holds) {
        throw SoakFailure(what + (linkLosses > 0 ? ", after a lost link" : ""));
    }
}

camera::PacketRates disturbance()
{
    return {.lose = 0.01,
            .repeat = 0.01,
            .reorder = 0.01,
            .delay = 0.001,
            .pause = std::chrono::microseconds(500)};
}

/// A busy machine keeps these limits, too; the heartbeat's is the time that a lost link takes.
TelvoConnectionSettings hostSettings()
{
    TelvoConnectionSettings settings = patientSettings();
    settings.packetSize = 1500;
    settings.maximumPendingResends = 1000;
    settings.heartbeatTimeout = 6000;
    return settings;
}

/// One camera and one host.
class Round
{
  public:
    Round(CallWatch& calls, SoakCounts& counts) : mCalls(calls), mCounts(counts) {}
    ~Round()
    {
        mCalls.within(kDisconnectLimit, "expDisconnectGrabber at the end",
                      [] { return expDisconnectGrabber(kCamera); });
    }
    Round(const Round&) = delete;
    Round& operator=(const Round&) = delete;

    void run()
    {
        const auto error = mCamera.start();
        require(!error, "the camera does not start: " + error.value_or(""));
        mCamera.faults().setPacketRates(disturbance());
        open();
        watchLive(true);
        record();
        readBack();
        loseLink();
        open();
        watchLive(false);
        close();
        mCounts.resentPackets += mCamera.log().counters().resentPackets;
    }

  private:
    /// Calls an export that has to return 0.
    template <typename Call>
    void succeed(const std::string& name, std::chrono::seconds limit, Call call)
    {
        const std::int32_t result = mCalls.within(limit, name, call);
        require(result == 0, name + " returns " + std::to_string(result));
    }

    void open()
    {
        // A camera whose host went without a word frees itself when no heartbeat has come.
        const bool connected = eventually(
            [&] {
                return mCalls.within(kConnectLimit, "expConnectGrabber", [&] {
                    return expConnectGrabber(mCamera.macText().c_str(),
                                             mCamera.options().address.c_str(), 1, &mSettings,
                                             kCamera);
                }) == 0;
            },
            kLinkLimit);
        require(connected, "the camera cannot be connected");
        linkLosses = 0;
        expSetChangedCallback([](std::int32_t) { ++linkLosses; }, kCamera);
        succeed("expInitializeGrabber", kCallLimit,
                [&] { return expInitializeGrabber(&mSettings, kCamera); });
    }

    void close()
    {
        succeed("expDisconnectGrabber", kDisconnectLimit,
                [] { return expDisconnectGrabber(kCamera); });
    }

    /// @param stalls  the camera stops in the middle of a picture once
    void watchLive(bool stalls)
    {
        if (stalls) {
            mCamera.faults().add(camera::FrameFault{.kind = camera::FrameFaultKind::Silence,
                                                    .position = 50,
                                                    .amount = 1,
                                                    .pause = 200ms});
        }
        succeed("expStartLiveMode", kCallLimit, [] { return expStartLiveMode(kCamera); });
        for (int i = 0; i < kLivePictures; ++i) {
            takePicture();
        }
        succeed("expStopLiveMode", kCallLimit, [] { return expStopLiveMode(kCamera); });
    }

    void takePicture()
    {
        std::vector<std::uint8_t> picture;
        const bool came = eventually(
            [&] {
                picture = mHost.previewImage();
                return !picture.empty();
            },
            kPictureLimit);
        require(came, "no live picture comes");
        require(showsScene(picture, mCamera.liveView()), "a live picture is wrong");
        ++mCounts.liveImages;
    }

    void record()
    {
        succeed("expSetRecordMode", kCallLimit, [] { return expSetRecordMode(0, kCamera); });
        succeed("expStartRecordMode", kCallLimit, [] { return expStartRecordMode(kCamera); });
        const bool ended = eventually(
            [] {
                std::uint8_t idle = 0;
                return expIsStateIdle(&idle, kCamera) == 0 && idle == 1;
            },
            kCallLimit);
        require(ended, "the recording does not end");
        succeed("expStopRecordMode", kCallLimit, [] { return expStopRecordMode(kCamera); });
    }

    void readBack()
    {
        succeed("expStartFrameBlockTransfer", kCallLimit,
                [] { return expStartFrameBlockTransfer(kCamera); });
        const auto same = mCalls.within(kReadoutLimit, "reading the recording",
                                        [&] { return readsWholeSequence(mHost, mCamera, 0); });
        require(static_cast<bool>(same), std::string("the recording: ") + same.message());
        mCounts.recordedFrames += recordedFrames(mCamera, 0);
        succeed("expStopFrameBlockTransfer", kCallLimit,
                [] { return expStopFrameBlockTransfer(kCamera); });
    }

    void loseLink()
    {
        succeed("expStartLiveMode", kCallLimit, [] { return expStartLiveMode(kCamera); });
        takePicture();
        mCamera.faults().setSilent(true);
        require(eventually([] { return linkLosses > 0; }, kLinkLimit), "a lost link is not told");
        succeed("expStopLiveMode", kCallLimit, [] { return expStopLiveMode(kCamera); });
        close();
        mCamera.faults().setSilent(false);
        ++mCounts.linkLosses;
    }

    CallWatch& mCalls;
    SoakCounts& mCounts;
    VirtualCamera mCamera{recordingCamera(kRecordedFrames)};
    const TelvoConnectionSettings mSettings = hostSettings();
    Host mHost{kCamera};
};

} // namespace

void runRound(CallWatch& calls, SoakCounts& counts)
{
    Round(calls, counts).run();
}
