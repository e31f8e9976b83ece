#include "RecordedCamera.h"

#include <fstream>
#include <gmock/gmock.h>

namespace
{

using camera::FeatureId;
using testing::HasSubstr;

class Review : public RecordedCamera
{
  protected:
    std::vector<std::string> review(const std::vector<std::string>& more) const
    {
        std::vector<std::string> words{"review", "--camera", camera->options().address};
        words.insert(words.end(), more.begin(), more.end());
        return words;
    }
    std::string sheet() const { return folder / "sheet.png"; }
};

TEST_F(Review, ShowsEvenlySpreadFramesAndReadsNoOthers)
{
    start(recordedCamera(300));
    const ToolOutcome result = runTool(review({"--contact-sheet", sheet(), "--frames", "4"}));
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_THAT(result.output, HasSubstr("SEQUENCE  FRAMES  SIZE"));
    EXPECT_THAT(result.output, HasSubstr("0         300     64x48  0.9  0.149500 s  2000.0"));
    EXPECT_THAT(result.output, HasSubstr("contact sheet: " + sheet()));
    EXPECT_EQ(camera->log().counters().blocks, 5U) << "four frames and the description";

    const ToolOutcome read =
        runProgram({"convert-im6.q16", sheet(), "-crop", "64x48+72+4", "-depth", "8", "gray:-"});
    EXPECT_TRUE(read.output == withoutHeaders(recorded(99, 1), 64, frameSize()))
        << "the second cell is another frame";
}

TEST_F(Review, TellsOfEverySequence)
{
    switchOn(withFourSequences(recordedCamera(400), 20));
    ASSERT_TRUE(triggerFourSequences(*camera));
    const ToolOutcome result = runTool(review({"--json"}));
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    const nlohmann::json json = nlohmann::json::parse(result.output);
    EXPECT_EQ(json["mode"], "ring");
    ASSERT_EQ(json["sequences"].size(), 4U);
    for (std::uint32_t i = 0; i < 4; ++i) {
        EXPECT_EQ(json["sequences"][i]["frames"], recordedFrames(*camera, i));
        EXPECT_EQ(json["sequences"][i]["looked-at"].size(), 2U);
    }
}

TEST_F(Review, LeavesAFileThatIsThereAndTheUsersPictureSize)
{
    start(recordedCamera(30));
    {
        Host host;
        host.open(*camera);
        std::uint32_t width = 128;
        ASSERT_EQ(expSetWidth(&width, host.id()), 0);
    }
    std::ofstream(sheet()) << "earlier";
    EXPECT_THAT(runTool(review({"--contact-sheet", sheet()})).errors,
                HasSubstr("sheet.png is there already; --force replaces it"));
    EXPECT_EQ(contents(sheet()), "earlier");
    EXPECT_EQ(runTool(review({"--contact-sheet", sheet(), "--force"})).exitStatus, 0);
    EXPECT_NE(contents(sheet()), "earlier");
    EXPECT_EQ(camera->value(FeatureId::Width), 128);
}

TEST_F(Review, RefusesASequenceThatIsNotThere)
{
    start(recordedCamera(30));
    const ToolOutcome result = runTool(review({"--sequence", "1", "--contact-sheet", sheet()}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("the recording has 1 sequence, numbered from 0"));
    EXPECT_EQ(entries(folder.path()), 0U);
}

} // namespace
