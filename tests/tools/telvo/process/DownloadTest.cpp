/// What a download tells, and how it leaves the camera.
#include "RecordedCamera.h"

#include <gmock/gmock.h>

namespace
{

using camera::FeatureId;
using testing::HasSubstr;

class Download : public RecordedCamera
{
};

TEST_F(Download, TellsAllThatIsKnownOfTheFramesInASidecar)
{
    start(recordedCamera(50));
    downloads("a", {"--count", "20"});
    EXPECT_EQ(runProgram({"python3", "-m", "json.tool", folder / "a.json"}).exitStatus, 0);

    const nlohmann::json json = jsonOf(folder / "a.json");
    EXPECT_EQ(json["complete"], true);
    EXPECT_EQ(json["camera"]["model"], "TOVI1");
    EXPECT_EQ(json["camera"]["serial-number"], "VC00000B");
    EXPECT_EQ(json["camera"]["mac-address"], "02:54:45:00:00:0b");
    EXPECT_EQ(json["settings"]["frame-rate"]["value"], 2000);
    EXPECT_EQ(json["recording"],
              nlohmann::json::parse(R"({"width": 64, "height": 48, "mode": "single",
                  "sequences": 1, "sequence": 0, "frames": 50, "trigger-frame": null,
                  "end": "full"})"));
    EXPECT_EQ(json["selection"], nlohmann::json::parse(R"({"first": 0, "count": 20, "every": 1})"));
    EXPECT_EQ(json["pictures"],
              nlohmann::json::parse(R"({"file-format": "raw", "width": 64, "height": 48,
                  "pixel-format": "Mono8", "header": "kept"})"));
    EXPECT_EQ(json["counter-check"]["received"], 20);
    EXPECT_EQ(json["counter-check"]["gaps"].size(), 0U);
    ASSERT_EQ(json["frames"].size(), 20U);
    for (std::uint32_t i = 0; i < 20; ++i) {
        EXPECT_EQ(json["frames"][i]["counter"], camera->recordedFrame(0, i)->number);
        EXPECT_EQ(json["frames"][i]["time"], camera->recordedFrame(0, i)->time);
        EXPECT_EQ(json["frames"][i]["flags"], nlohmann::json({"recording"}));
    }
}

TEST_F(Download, ListsTheGapsOfTheFrameCounterAndFails)
{
    start(recordedCamera(50));
    camera->faults().add(camera::FrameFault{
        .kind = camera::FrameFaultKind::JumpCounter, .position = 20, .amount = 5});
    const ToolOutcome result = runTool(download("a"));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("frame counter: not continuous"));
    const nlohmann::json check = jsonOf(folder / "a.json")["counter-check"];
    EXPECT_EQ(check["whole"], false);
    EXPECT_EQ(check["gaps"][0], nlohmann::json::parse(R"({"behind-frames": 20, "from-counter": 19,
                                        "to-counter": 25, "missing": 5})"));
    EXPECT_EQ(contents(folder / "a").size(), 50 * frameSize()) << "the frames are kept";
}

TEST_F(Download, PrintsJsonForPrograms)
{
    start(recordedCamera(50));
    const nlohmann::json json = nlohmann::json::parse(downloads("a", {"--json"}).output);
    EXPECT_EQ(json["frames"], 50);
    EXPECT_EQ(json["complete"], true);
    EXPECT_EQ(json["counter-check"]["whole"], true);
    EXPECT_EQ(json["sidecar"], (folder / "a").string() + ".json");
}

/// Two cameras with recordings of their own.
class DownloadFromTwo : public RecordedCamera
{
  protected:
    void SetUp() override
    {
        start(recordedCamera(50));
        other = std::make_unique<camera::VirtualCamera>(recordedCamera(30, "127.0.0.12"));
        ASSERT_FALSE(other->start());
        ASSERT_TRUE(hasFinished(*other));
    }
    std::vector<std::string> fromBoth(const std::string& name,
                                      const std::vector<std::string>& more = {}) const
    {
        std::vector<std::string> words = download(name, more);
        words.insert(words.end(), {"--camera", "127.0.0.12"});
        return words;
    }

    std::unique_ptr<camera::VirtualCamera> other;
};

TEST_F(DownloadFromTwo, GivesEachAFileOfItsOwn)
{
    const ToolOutcome result = runTool(fromBoth("{serial}-{ip}", {"--json"}));
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    const nlohmann::json json = nlohmann::json::parse(result.output);
    EXPECT_EQ(json[0]["camera"], "127.0.0.11");
    EXPECT_EQ(json[0]["frames"], 50);
    EXPECT_EQ(json[1]["camera"], "127.0.0.12");
    EXPECT_EQ(json[1]["frames"], 30);
    EXPECT_TRUE(contents(folder / "VC00000B-127.0.0.11") == recorded(0, 50));
    EXPECT_EQ(contents(folder / "VC00000C-127.0.0.12").size(), 30 * frameSize());
    EXPECT_EQ(jsonOf(folder / "VC00000C-127.0.0.12.json")["camera"]["ip-address"], "127.0.0.12");
    EXPECT_EQ(entries(folder.path()), 4U);
}

TEST_F(DownloadFromTwo, FailsForTheOneThatFailsAndFinishesTheOther)
{
    const ToolOutcome result = runTool(fromBoth("{ip}.tif", {"--format", "tiff", "--count", "40"}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("127.0.0.11:\n40 frames of 64x48"));
    EXPECT_THAT(result.errors, HasSubstr("telvo: 127.0.0.12: "));
    EXPECT_TRUE(std::filesystem::exists(folder / "127.0.0.11.tif"));
    EXPECT_FALSE(std::filesystem::exists(folder / "127.0.0.12.tif"));
}

TEST_F(DownloadFromTwo, NeedsAPatternForTheirFiles)
{
    const ToolOutcome result = runTool(fromBoth("both"));
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, HasSubstr("put {ip}, {serial} or {name} into --out"));
    EXPECT_EQ(runTool(fromBoth("{ip}", {"--sidecar", folder / "one"})).exitStatus, 2);
    EXPECT_EQ(entries(folder.path()), 0U);
}

TEST_F(Download, PutsTheUsersPictureSizeBack)
{
    start(recordedCamera(50));
    {
        Host host;
        host.open(*camera);
        std::uint32_t width = 1024;
        std::uint32_t height = 900;
        std::uint32_t left = 256;
        std::uint32_t top = 100;
        ASSERT_EQ(expSetWidth(&width, host.id()), 0);
        ASSERT_EQ(expSetHeight(&height, host.id()), 0);
        ASSERT_EQ(expSetOffsetX(&left, host.id()), 0);
        ASSERT_EQ(expSetOffsetY(&top, host.id()), 0);
    }
    downloads("a");
    EXPECT_TRUE(contents(folder / "a") == recorded(0, 50));
    EXPECT_EQ(camera->value(FeatureId::Width), 1024);
    EXPECT_EQ(camera->value(FeatureId::Height), 900);
    EXPECT_EQ(camera->value(FeatureId::OffsetX), 256);
    EXPECT_EQ(camera->value(FeatureId::OffsetY), 100);
}

} // namespace
