/// Which frames a download takes, and how it asks for them.
#include "RecordedCamera.h"

#include <gmock/gmock.h>

namespace
{

using testing::HasSubstr;

class DownloadRange : public RecordedCamera
{
};

TEST_F(DownloadRange, TakesTheFramesAskedFor)
{
    start(recordedCamera(100));
    downloads("a", {"--first", "90"});
    EXPECT_TRUE(contents(folder / "a") == recorded(90, 10));
    downloads("b", {"--first", "5", "--count", "3", "--every", "20"});
    EXPECT_TRUE(contents(folder / "b") == recorded(5, 1) + recorded(25, 1) + recorded(45, 1));
    EXPECT_EQ(jsonOf(folder / "b.json")["frames"][2]["frame"], 45);
    EXPECT_EQ(jsonOf(folder / "b.json")["counter-check"]["whole"], true);
}

TEST_F(DownloadRange, RefusesFramesThatWereNotRecorded)
{
    start(recordedCamera(100));
    const ToolOutcome result = runTool(download("a", {"--first", "90", "--count", "11"}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("only 10 such frames from frame 90 on"));
    EXPECT_THAT(runTool(download("a", {"--sequence", "1"})).errors,
                HasSubstr("the recording has 1 sequence,"));
    EXPECT_EQ(entries(folder.path()), 0U);
}

TEST_F(DownloadRange, AsksForFarFramesOneByOne)
{
    start(recordedCamera(1000));
    downloads("a", {"--every", "400"});
    EXPECT_TRUE(contents(folder / "a") == recorded(0, 1) + recorded(400, 1) + recorded(800, 1));
    EXPECT_LT(camera->log().counters().blocks, 20U) << "not the frames between";
}

TEST_F(DownloadRange, ReadsEverySequenceAroundItsTrigger)
{
    switchOn(withFourSequences(recordedCamera(400), 30));
    for (std::uint32_t sequence = 0; sequence < 4; ++sequence) {
        ASSERT_TRUE(eventually([&] { return recordedFrames(*camera, sequence) > 50; }));
        camera->trigger();
    }
    ASSERT_TRUE(hasFinished(*camera));
    const std::uint32_t frames = recordedFrames(*camera, 2);
    const std::uint32_t trigger = frames - 30;
    downloads("a", {"--sequence", "2", "--around-trigger", "8"});
    EXPECT_TRUE(contents(folder / "a") == recorded(trigger - 8, 17, 2));
    const nlohmann::json recording = jsonOf(folder / "a.json")["recording"];
    EXPECT_EQ(recording["trigger-frame"], trigger);
    EXPECT_EQ(recording["end"], "trigger");
    EXPECT_EQ(recording["sequences"], 4);
    EXPECT_EQ(recording["mode"], "ring");
}

} // namespace
