#include "Sidecar.h"
#include "Failure.h"
#include "TemporaryFolder.h"

#include <fstream>
#include <gtest/gtest.h>

namespace
{

using namespace telvo;
using Json = nlohmann::ordered_json;

ListedFrame frame(std::uint32_t number, std::uint16_t counter, std::uint8_t flags = 0x04)
{
    return {number, {.time = 1000U * number, .counter = counter, .flags = flags, .extra = 0}};
}

TEST(Sidecar, TellsOfTheSeriesOfItsFramesAndOfTheirGaps)
{
    const TemporaryFolder folder;
    const Sidecar sidecar{{{"camera", {{"model", "T"}}}}, {frame(5, 5), frame(6, 9, 0x0D)}};
    FrameCounter counter;
    counter.add(5);
    counter.add(9);
    writeSidecar(folder / "a.json", sidecar, counter, 3, IfThere::Refuse);

    std::ifstream file(folder / "a.json");
    const Json json = Json::parse(file);
    EXPECT_EQ(json["format"], "telvo-recording");
    EXPECT_EQ(json["camera"]["model"], "T");
    const Json check = json["counter-check"];
    EXPECT_EQ(check["whole"], false);
    EXPECT_EQ(check["received"], 2);
    EXPECT_EQ(check["expected"], 3);
    EXPECT_EQ(check["missing"], 3);
    EXPECT_EQ(check["gaps"], Json::parse(R"([{"behind-frames": 1, "from-counter": 5,
                                              "to-counter": 9, "missing": 3}])"));
    EXPECT_EQ(json["frames"].size(), 2U);
    EXPECT_EQ(json["frames"][1], Json::parse(R"({"frame": 6, "counter": 9, "time": 6000,
                              "flags": ["trigger", "recording", "trailer"], "flag-byte": 13,
                              "extra": 0})"));
}

TEST(Sidecar, IsReadBack)
{
    const TemporaryFolder folder;
    const Sidecar sidecar{{{"selection", {{"first", 5}}}}, {frame(5, 5), frame(6, 6, 0x10)}};
    writeSidecar(folder / "a.json", sidecar, FrameCounter(), 2, IfThere::Refuse);
    const Sidecar read = readSidecar(folder / "a.json");
    EXPECT_EQ(read.about["selection"]["first"], 5);
    ASSERT_EQ(read.frames.size(), 2U);
    EXPECT_EQ(read.frames[1].frame, 6U);
    EXPECT_EQ(read.frames[1].header, frame(6, 6, 0x10).header);
}

TEST(Sidecar, TakesNamesInAnyCode)
{
    const TemporaryFolder folder;
    writeSidecar(folder / "a.json",
                 {{{"name", "K\xFC"
                            "che"}},
                  {}},
                 FrameCounter(), 0, IfThere::Refuse);
    EXPECT_EQ(readSidecar(folder / "a.json").about["name"], "K\xEF\xBF\xBD"
                                                            "che");
}

TEST(Sidecar, IsNotReadFromAnotherFile)
{
    const TemporaryFolder folder;
    EXPECT_THROW(readSidecar(folder / "missing"), Failure);
    for (const char* text : {"", "{", "[]", "{}", R"({"format": "other"})", "7",
                             R"({"format": "telvo-recording", "frames": [{"flag-byte": "x"}]})"}) {
        std::ofstream(folder / "other") << text;
        EXPECT_THROW(readSidecar(folder / "other"), Failure) << text;
    }
}

TEST(Sidecar, LiesBesideAFileAndInAFolder)
{
    EXPECT_EQ(sidecarPath("out/a.tif", false), "out/a.tif.json");
    EXPECT_EQ(sidecarPath("out/a", true), std::filesystem::path("out/a") / "recording.json");
}

} // namespace
