#include "CameraControl.h"
#include "PanelProcess.h"

#include <fstream>
#include <iterator>

namespace
{

using camera::FeatureId;
using testing::HasSubstr;

camera::CameraOptions cameraOf(const std::string& address, camera::SensorSize sensor)
{
    camera::CameraOptions options = quickCamera(address);
    options.sensor = sensor;
    return options;
}

/// Two cameras at one panel, both connected, and a page.
class PanelCameras : public PanelTest
{
  protected:
    void beginBoth(const camera::CameraOptions& options = cameraOf("127.0.0.12", {32, 24}))
    {
        switchOn(cameraOf("127.0.0.11", {64, 48}));
        other = std::make_unique<camera::VirtualCamera>(options);
        const auto problem = other->start();
        ASSERT_FALSE(problem) << *problem;
        startPanel({"--camera", "127.0.0.11", "--camera", "127.0.0.12"});
        page = std::make_unique<PanelClient>(port());
        awaitState(mac(), "idle");
        awaitState(otherMac(), "idle");
    }
    /// The same with a recording in the other camera.
    void beginRecorded()
    {
        camera::CameraOptions options = cameraOf("127.0.0.12", {32, 24});
        options.recordAtPowerOn = true;
        options.memoryBytes = 64U << 10U; // full in a moment
        options.settings[FeatureId::AcquisitionFrameRateRaw] = 1000;
        beginBoth(options);
    }
    std::string otherMac() { return other->macText(); }

    Json askOther(const std::string& what, Json more = Json::object())
    {
        more["do"] = what;
        more["camera"] = otherMac();
        return page->ask(more);
    }
    void expectDoneByOther(const std::string& what, const Json& more)
    {
        const Json answer = askOther(what, more);
        EXPECT_EQ(answer["ok"], true) << what << ": " << answer.dump();
    }
    void awaitState(const std::string& camera, const std::string& state)
    {
        EXPECT_TRUE(becomes([&] {
            page->ask({{"do", "downloads"}}); // its answer comes behind all states so far
            return page->state(camera)["state"] == state;
        })) << page->state(camera).dump();
    }
    void expectOthersFrame(std::uint32_t number)
    {
        const PanelPicture picture = page->askPicture({{"do", "frame"},
                                                       {"camera", otherMac()},
                                                       {"sequence", 0},
                                                       {"frame", number},
                                                       {"raw", true}});
        EXPECT_EQ(picture.header["camera"], otherMac());
        const std::vector<std::uint8_t> truth = other->recordedBytes(0, number);
        ASSERT_EQ(picture.bytes.size(), truth.size());
        constexpr std::size_t kHeader = 16; // which is hidden
        EXPECT_EQ(picture.bytes.substr(kHeader), std::string(truth.begin() + kHeader, truth.end()));
    }
    void expectOthersDownload()
    {
        expectDoneByOther(
            "download",
            {{"sequence", 0}, {"first", 5}, {"count", 20}, {"format", "raw"}, {"name", "run"}});
        const Json end = page->awaitEvent(
            "download", [](const Json& event) { return event["state"] != "running"; });
        EXPECT_EQ(end["camera"], otherMac());
        EXPECT_EQ(end["verdict"]["whole"], true) << end.dump();
        std::ifstream file(folder.path() / "run.raw", std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        const std::vector<std::uint8_t> truth = other->recordedBytes(0, 5);
        EXPECT_EQ(bytes.substr(0, truth.size()), std::string(truth.begin(), truth.end()));
    }

    std::unique_ptr<camera::VirtualCamera> other;
};

TEST_F(PanelCameras, ShowTheirOwnPicturesUntilTheyAreLetGoTogether)
{
    beginBoth();
    expectDone("preview", {{"width", 16}});
    expectDoneByOther("preview", {{"width", 16}});
    expectDone("live", {{"on", true}});
    expectDoneByOther("live", {{"on", true}});
    std::map<std::string, int> widths; // each page has one picture of each camera at a time
    for (int i = 0; i < 2; ++i) {
        const PanelPicture picture = page->awaitPicture();
        widths[picture.header["camera"]] = picture.header["pictureWidth"];
    }
    EXPECT_EQ(widths, (std::map<std::string, int>{{mac(), 64}, {otherMac(), 32}}));

    expectDone("live", {{"on", false}});
    EXPECT_EQ(page->state(mac())["state"], "idle");
    EXPECT_EQ(page->state(otherMac())["state"], "live");
    EXPECT_EQ(other->value(FeatureId::CameraState), camera::kStateLive);

    EXPECT_EQ(endPanel().exitStatus, 0);
    EXPECT_TRUE(isFree());
    EXPECT_TRUE(::isFree(*other));
}

TEST_F(PanelCameras, RecordWhileTheOtherIsSetLookedThroughAndDownloaded)
{
    beginRecorded();
    const Json recorded = askOther("recording")["sequences"];
    const std::int64_t exposure = value(FeatureId::ExposureTimeRaw);
    ASSERT_NE(exposure, 777);
    expectDone("arm", {{"mode", "ring"}, {"trigger", "key"}, {"post", 20}});
    awaitState(mac(), "armed");

    expectDoneByOther("set", {{"values", {{"exposure", 777}}}});
    EXPECT_EQ(other->value(FeatureId::ExposureTimeRaw), 777);
    EXPECT_EQ(value(FeatureId::ExposureTimeRaw), exposure);
    expectOthersFrame(7);
    EXPECT_THAT(askOther("stop")["error"], HasSubstr("no recording is running"));
    EXPECT_THAT(ask("frame", {{"sequence", 0}, {"frame", 7}})["error"],
                HasSubstr("a recording is running"));
    expectOthersDownload();
    EXPECT_EQ(page->state(mac())["state"], "armed");

    expectDone("trigger");
    awaitState(mac(), "idle");
    EXPECT_EQ(askOther("recording")["sequences"], recorded);
    EXPECT_EQ(ask("recording")["sequences"][0]["width"], 64);
}

} // namespace
