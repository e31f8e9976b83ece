#include "PanelProcess.h"

#include <cstdlib>

namespace
{

using camera::FeatureId;
using testing::HasSubstr;

class PanelRecord : public PanelTest
{
  protected:
    /// A recording of a few frames that ends by itself.
    void record(const Json& more = {{"frames", 40}})
    {
        expectDone("set", {{"values", {{"frame-rate", 500}}}});
        Json arm{{"mode", "single"}, {"trigger", "none"}};
        arm.update(more);
        expectDone("arm", arm);
        page->awaitEvent("recording");
        page->awaitState("idle");
    }
    PanelPicture frame(std::uint32_t number, Json more = Json::object())
    {
        more.update({{"do", "frame"}, {"camera", mac()}, {"sequence", 0}, {"frame", number}});
        return page->askPicture(more);
    }
};

TEST_F(PanelRecord, RecordsAndListsWhatItGot)
{
    begin();
    record();
    const Json sequences = ask("recording")["sequences"];
    ASSERT_EQ(sequences.size(), 1U);
    EXPECT_GE(sequences[0]["frames"], 40);
    EXPECT_NEAR(sequences[0]["fps"].get<double>(), 500, 5);
    EXPECT_EQ(sequences[0]["trigger"], nullptr);
}

TEST_F(PanelRecord, HasNothingToListBeforeARecording)
{
    begin();
    EXPECT_EQ(ask("recording")["sequences"], Json::array());
    EXPECT_EQ(ask("frame", {{"sequence", 0}, {"frame", 0}})["ok"], false);
    EXPECT_EQ(ask("trigger")["ok"], false);
    EXPECT_EQ(ask("stop")["ok"], false);
}

TEST_F(PanelRecord, ShowsTheRecordedFramesPixelByPixel)
{
    begin();
    record();
    const PanelPicture picture = frame(7, {{"raw", true}});
    EXPECT_EQ(picture.header["kind"], "frame");
    EXPECT_EQ(picture.header["number"], 7);
    const std::vector<std::uint8_t> truth = camera().recordedBytes(0, 7);
    ASSERT_EQ(picture.bytes.size(), truth.size());
    for (std::size_t i = 16; i < truth.size(); ++i) { // behind the header
        ASSERT_EQ(static_cast<std::uint8_t>(picture.bytes[i]), truth[i]) << i;
    }
    EXPECT_EQ(picture.header["counter"], camera().recordedFrame(0, 7)->number);
}

TEST_F(PanelRecord, RefusesFramesThatThereAreNot)
{
    begin();
    record();
    EXPECT_THAT(ask("frame", {{"sequence", 0}, {"frame", 1'000'000}})["error"],
                HasSubstr("numbered from 0"));
    EXPECT_THAT(ask("frame", {{"sequence", 3}, {"frame", 0}})["error"],
                HasSubstr("1 sequence, numbered from 0"));
    EXPECT_EQ(frame(0).header["number"], 0); // and goes on
}

TEST_F(PanelRecord, WaitsForTheUsersTrigger)
{
    begin();
    expectDone("arm", {{"mode", "ring"}, {"trigger", "key"}, {"post", 20}});
    page->awaitState("armed");
    expectDone("trigger");
    page->awaitEvent("recording");
    EXPECT_THAT(page->awaitState("idle")["text"], HasSubstr("ended by the key"));
}

TEST_F(PanelRecord, WaitsForTheCamerasTrigger)
{
    begin();
    expectDone("set", {{"values", {{"frame-rate", 500}}}});
    expectDone("arm", {{"mode", "ring"}, {"trigger", "external"}, {"post", 20}});
    page->awaitState("armed");
    EXPECT_THAT(ask("trigger")["error"], HasSubstr("a trigger of the camera's own"));
    ASSERT_TRUE(becomes([this] { return camera().trigger(); }));
    page->awaitEvent("recording");
    page->awaitState("idle");
    EXPECT_TRUE(frame(0).header.contains("timeFromTrigger")); // also before it was listed
    const Json sequence = ask("recording")["sequences"][0];
    EXPECT_EQ(sequence["trigger"], sequence["frames"].get<int>() - 20);
    EXPECT_FALSE(sequence.contains("isTriggerApproximate"));
    constexpr std::uint32_t kPeriod = 2000; // microseconds
    const auto trigger = sequence["trigger"].get<std::uint32_t>();
    for (const std::uint32_t offset : {19U, 12U, 1U, 0U}) {
        const PanelPicture picture = frame(trigger + offset);
        EXPECT_EQ(picture.header["timeFromTrigger"], offset * kPeriod) << offset;
        EXPECT_FALSE(picture.header.contains("isTriggerApproximate"));
    }
}

TEST_F(PanelRecord, ShowsPicturesWhileItRecordsAndEndsWhenTold)
{
    begin();
    expectDone("preview", {{"width", 64}});
    expectDone("arm", {{"mode", "ring"}, {"trigger", "none"}});
    EXPECT_EQ(page->awaitPicture().header["kind"], "live");
    EXPECT_EQ(page->awaitState("recording")["live"], true);
    EXPECT_THAT(ask("set", {{"values", {{"width", 32}}}})["error"], HasSubstr("stop it first"));
    EXPECT_THAT(ask("live", {{"on", true}})["error"], HasSubstr("stop it first"));
    EXPECT_THAT(ask("frame", {{"sequence", 0}, {"frame", 0}})["error"], HasSubstr("stop it first"));
    expectDone("stop");
    EXPECT_EQ(page->state(mac())["state"], "idle");
    EXPECT_EQ(value(FeatureId::CameraState), camera::kStateIdle);
}

TEST_F(PanelRecord, SaysWhatMakesNoSense)
{
    begin();
    EXPECT_EQ(ask("arm", {{"mode", "single"}, {"trigger", "key"}})["ok"], false);
    EXPECT_EQ(ask("arm", {{"mode", "ring"}, {"trigger", "key"}, {"post", "much"}})["ok"], false);
    EXPECT_EQ(page->state(mac())["state"], "idle");
}

TEST_F(PanelRecord, FindsARecordingThatRunsAlready)
{
    camera::CameraOptions options = quickCamera();
    options.recordAtPowerOn = true;
    options.settings[FeatureId::RecordMode] = camera::kRecordContinuous;
    begin(options, "recording");
    expectDone("stop");
    EXPECT_EQ(page->state(mac())["state"], "idle");
    EXPECT_GT(ask("recording")["sequences"][0]["frames"], 0);
}

TEST_F(PanelRecord, DrawsTheBrightnessOverTime)
{
    begin();
    record();
    Json curve = ask("curve", {{"sequence", 0}, {"points", 5}});
    EXPECT_EQ(curve["of"], 5);
    if (curve["points"].size() < 5) {
        curve = page->awaitEvent("curve",
                                 [](const Json& event) { return event["points"].size() == 5; });
    }
    for (const Json& point : curve["points"]) {
        const std::vector<std::uint8_t> truth = camera().recordedBytes(0, point["frame"]);
        double sum = 0;
        for (const std::uint8_t pixel : truth) {
            sum += pixel;
        }
        EXPECT_NEAR(point["mean"].get<double>(), sum / static_cast<double>(truth.size()), 2);
    }
}

// It asks for them one after the other, and the last may come late.
TEST_F(PanelRecord, GoesOnLiveWhateverThePageGetsByTheWay)
{
    begin();
    record();
    expectDone("live", {{"on", true}});
    page->awaitState("live");
    const Json small{{"sequence", 0}, {"frame", 3}, {"width", 72}, {"keep", true}};
    EXPECT_THAT(ask("frame", small)["error"], HasSubstr("live pictures"));
    EXPECT_THAT(ask("curve", {{"sequence", 0}, {"points", 5}})["error"],
                HasSubstr("live pictures"));
    EXPECT_EQ(page->state(mac())["state"], "live");
    frame(3); // that somebody wants to see
    page->awaitState("idle");
}

TEST_F(PanelRecord, ReadsInTheSizeThatWasRecordedAndGivesTheUsersBack)
{
    begin();
    expectDone("set", {{"values", {{"width", 32}}}});
    record();
    expectDone("set", {{"values", {{"width", 64}}}});
    EXPECT_EQ(frame(3).header["pictureWidth"], 32);
    EXPECT_EQ(value(FeatureId::Width), 32);
    const Json settings = ask("settings")["settings"];
    EXPECT_EQ(value(FeatureId::Width), 64);
    EXPECT_EQ(settings[0]["name"], "width");
    EXPECT_EQ(settings[0]["value"], 64);
}

TEST_F(PanelRecord, CopiesToTheFlashCard)
{
    camera::CameraOptions options = quickCamera();
    options.flashBytesPerSecond = 1'000'000;
    begin(options);
    record();
    expectDone("flash", {{"on", true}});
    EXPECT_EQ(page->awaitState("flash")["flashCard"], true); // its button stays
    EXPECT_THAT(ask("arm", {{"mode", "single"}, {"trigger", "none"}})["error"],
                HasSubstr("flash card"));
    expectDone("flash", {{"on", false}});
    page->awaitState("idle");
}

TEST_F(PanelRecord, HasNoFlashCommandWithoutACard)
{
    camera::CameraOptions options = quickCamera();
    options.flashCard = false;
    begin(options);
    EXPECT_EQ(ask("flash", {{"on", true}})["error"], "the camera has no flash card");
}

TEST_F(PanelRecord, GivesUpARecordingWhoseLinkIsLost)
{
    begin();
    expectDone("arm", {{"mode", "ring"}, {"trigger", "none"}});
    page->awaitState("recording");
    camera().stop();
    page->awaitState("lost");
    ASSERT_FALSE(camera().start());
    page->awaitState("idle");
}

} // namespace
