#include "CameraTest.h"

#include <csignal>
#include <nlohmann/json.hpp>
#include <thread>

namespace
{

using camera::FeatureId;
using testing::HasSubstr;
using testing::MatchesRegex;

class RecordProcess : public CameraTest
{
  protected:
    bool isRecording() { return value(FeatureId::CameraState) == camera::kStateRecording; }
    /// So many are recorded.
    bool hasRecorded(std::int64_t frames)
    {
        return becomes(
            [&] { return isRecording() && value(FeatureId::RecordNumberOfFrames) >= frames; });
    }
    void nextToFull()
    {
        camera::CameraOptions options = quickCamera();
        options.memoryBytes = 100 * 64 * 48; // bytes: a hundred frames
        switchOn(options);
    }
};

TEST_F(RecordProcess, WaitsForTheTriggerAndEndsAsTheCameraEndsIt)
{
    switchOn();
    ToolProcess tool(forCamera({"record", "--frames", "5", "--fps", "200", "--trigger", "external",
                                "--mode", "ring", "--post", "50"}));
    ASSERT_TRUE(hasRecorded(60));
    EXPECT_TRUE(camera().trigger());
    const ToolOutcome outcome = tool.wait();
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.errors;
    EXPECT_THAT(outcome.output,
                MatchesRegex("recorded [0-9]+ frames of 64x48 in the camera's memory\n"
                             "ended by the trigger; the trigger lies before frame [0-9]+ of "
                             "[0-9]+\n"));
    const auto frames = static_cast<std::uint32_t>(value(FeatureId::RecordNumberOfFrames));
    EXPECT_THAT(outcome.output, HasSubstr("before frame " + std::to_string(frames - 50) + " of " +
                                          std::to_string(frames)));
    EXPECT_NE(camera().recordedFrame(0, frames - 50)->flags & camera::kFlagTrigger, 0);
}

TEST_F(RecordProcess, WaitsForATriggerThatTheCameraIsSetTo)
{
    camera::CameraOptions options = quickCamera();
    options.settings[FeatureId::ExtTriggerEnable] = 1;
    options.settings[FeatureId::RecordMode] = camera::kRecordContinuous;
    options.settings[FeatureId::RecordTrailer] = 10;
    switchOn(options);
    ToolProcess tool(forCamera({"record", "--frames", "5", "--fps", "200"}));
    ASSERT_TRUE(hasRecorded(60));
    EXPECT_TRUE(camera().trigger());
    const ToolOutcome outcome = tool.wait();
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.errors,
              "telvo: waiting for the trigger, as the camera is set; --trigger none "
              "records without one\n");
}

TEST_F(RecordProcess, FailsWhereNoTriggerCame)
{
    switchOn();
    const ToolOutcome outcome =
        run({"record", "--seconds", "0.2", "--trigger", "external", "--mode", "ring"});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("telvo: no trigger came; look at its signal"));
    EXPECT_FALSE(isRecording());
}

TEST_F(RecordProcess, EndsWhenTheMemoryIsFull)
{
    nextToFull();
    const ToolOutcome outcome = run({"record", "--fps", "1000", "--mode", "single"});
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.output, "recorded 100 frames of 64x48 in the camera's memory\n"
                              "ended by the camera, its memory full\n");
}

TEST_F(RecordProcess, TakesSharesOfTheMemoryAroundTheTrigger)
{
    nextToFull();
    ToolProcess tool(
        forCamera({"record", "--fps", "200", "--trigger", "external", "--pre", "40%"}));
    ASSERT_TRUE(hasRecorded(100));
    EXPECT_TRUE(camera().trigger());
    EXPECT_THAT(tool.wait().output, HasSubstr("the trigger lies before frame 40 of 100\n"));
    EXPECT_EQ(value(FeatureId::RecordTrailer), 60);
}

TEST_F(RecordProcess, EndsWhenTheWatchedWindowTriggers)
{
    switchOn();
    const std::vector<std::string> window{"record",    "--trigger",   "window", "--window",
                                          "0,0,64,48", "--threshold", "1",      "--fps",
                                          "500",       "--post",      "20"};
    std::vector<std::string> brighter = window;
    brighter.insert(brighter.end(), {"--condition", "0"});
    const ToolOutcome outcome = run(brighter);
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.errors;
    EXPECT_THAT(outcome.output, HasSubstr("ended by the trigger; the trigger lies before frame "));
    EXPECT_EQ(value(FeatureId::IBWidth), 64);
    EXPECT_EQ(value(FeatureId::IBThreshold), 1);

    std::vector<std::string> darker = window; // which a picture never is
    darker.insert(darker.end(), {"--condition", "1", "--seconds", "0.3"});
    EXPECT_EQ(run(darker).exitStatus, 1);
}

TEST_F(RecordProcess, FillsSeveralSequencesATriggerEach)
{
    switchOn();
    ToolProcess tool(forCamera({"record", "--sequences", "4", "--trigger", "external", "--fps",
                                "500", "--post", "20", "--json"}));
    for (std::int64_t sequence = 0; sequence < 4; ++sequence) {
        ASSERT_TRUE(becomes([&] {
            return isRecording() && value(FeatureId::RecordCurrentSequenceNumber) == sequence &&
                   camera().trigger();
        }));
        ASSERT_TRUE(becomes([&] {
            return !isRecording() || value(FeatureId::RecordCurrentSequenceNumber) > sequence;
        }));
    }
    const ToolOutcome outcome = tool.wait();
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.errors;
    const nlohmann::json recorded = nlohmann::json::parse(outcome.output).at(0);
    EXPECT_EQ(recorded["endedBy"], "trigger");
    ASSERT_EQ(recorded["sequences"].size(), 4U);
    for (const nlohmann::json& sequence : recorded["sequences"]) {
        EXPECT_EQ(sequence["trigger"], sequence["frames"].get<int>() - 20);
    }
}

TEST_F(RecordProcess, TakesAKeyForTheTrigger)
{
    switchOn();
    const ToolOutcome outcome =
        run({"record", "--fps", "200", "--trigger", "key", "--post", "40", "--json"}, "x");
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.errors;
    EXPECT_THAT(outcome.output, HasSubstr("\"endedBy\": \"key\""));
    EXPECT_THAT(outcome.output, HasSubstr("\"trigger\": "));
    EXPECT_GE(value(FeatureId::RecordNumberOfFrames), 40);
}

TEST_F(RecordProcess, FollowsTheCopyToTheFlashCard)
{
    camera::CameraOptions options = quickCamera();
    options.flashBytesPerSecond = 1'000'000;
    options.settings[FeatureId::FlashCardWriteAfterRecordEnable] = 1;
    switchOn(options);
    const ToolOutcome outcome = run({"record", "--fps", "1000", "--frames", "100"});
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.errors;
    EXPECT_THAT(outcome.output, HasSubstr("the recording is on the flash card, too\n"));
    EXPECT_EQ(value(FeatureId::CameraState), camera::kStateIdle);
}

TEST_F(RecordProcess, StartsSeveralCamerasTogether)
{
    switchOn();
    camera::VirtualCamera second(quickCamera("127.0.0.12"));
    ASSERT_FALSE(second.start());
    const ToolOutcome outcome = run({"record", "--camera", "127.0.0.12", "--frames", "20"});
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.errors;
    EXPECT_THAT(outcome.output, HasSubstr("127.0.0.11:\nrecorded "));
    EXPECT_THAT(outcome.output, HasSubstr("127.0.0.12:\nrecorded "));
    EXPECT_GE(value(FeatureId::RecordNumberOfFrames), 20);
    EXPECT_GE(second.value(FeatureId::RecordNumberOfFrames), 20);
}

TEST_F(RecordProcess, TakesThePlaceOfThePicture)
{
    switchOn();
    const ToolOutcome outcome = run({"record", "--frames", "5", "--roi", "16,8,32,16"});
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.errors;
    EXPECT_THAT(outcome.output, HasSubstr(" frames of 32x16 "));
    EXPECT_EQ(value(FeatureId::OffsetX), 16);
    EXPECT_EQ(value(FeatureId::OffsetY), 8);
}

TEST_F(RecordProcess, NamesTheFirstRecordingFeatureThatTheCameraLacks)
{
    camera::CameraOptions options = quickCamera();
    options.missing = {FeatureId::RecordStart, FeatureId::RecordStop};
    switchOn(options);
    const ToolOutcome outcome = run({"record", "--frames", "5"});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.errors,
              "telvo: the camera lacks the feature \"RecordStart\", so that it cannot record; its "
              "maker may have firmware with it\n");
}

TEST(RecordOptions, RefuseWhatMakesNoSenseTogether)
{
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"record", "--mode", "single", "--trigger", "window"},
             {"record", "--mode", "single", "--post", "10"},
             {"record", "--threshold", "10"},
             {"record", "--post", "many"},
             {"record", "--post", "101%"},
             {"record", "--roi", "1,2,3"},
             {"record", "--sequences", "3"}}) {
        EXPECT_EQ(runTool(arguments).exitStatus, 2) << testing::PrintToString(arguments);
    }
}

} // namespace
