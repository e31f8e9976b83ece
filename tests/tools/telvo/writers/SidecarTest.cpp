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

void writeSidecar(const std::filesystem::path& path, const Sidecar& sidecar,
                  const FrameCounter& counter, std::uint64_t expected, IfThere ifThere)
{
    SidecarFile file(path, ifThere, sidecar.about, path, ifThere, expected);
    file.finish(sidecar, counter);
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
    const Json& check = json["counter-check"];
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

TEST(Sidecar, KeepsAnAccountOfTheFramesUntilItIsFinished)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "a.1.part") << "frames";
    const Sidecar sidecar{{{"camera", "K\xC3\xBC"}}, {frame(5, 5), frame(6, 6, 0x10), frame(7, 7)}};
    {
        SidecarFile file(folder / "a.json", IfThere::Refuse, sidecar.about, folder / "a.1.part",
                         IfThere::Replace, 3);
        file.keep(sidecar.frames, 1);
        file.keep(sidecar.frames, 2);
        const auto found = findUnfinished(folder / "a.json");
        ASSERT_TRUE(found);
        EXPECT_TRUE(equivalent(found->output, folder / "a.1.part"));
        EXPECT_EQ(found->ifThere, IfThere::Replace);
        EXPECT_EQ(found->sidecar.about, sidecar.about);
        ASSERT_EQ(found->sidecar.frames.size(), 2U);
        EXPECT_EQ(found->sidecar.frames[1].frame, 6U);
        EXPECT_EQ(found->sidecar.frames[1].header, frame(6, 6, 0x10).header);
        file.finish(sidecar, FrameCounter());
    }
    EXPECT_FALSE(findUnfinished(folder / "a.json"));
    EXPECT_TRUE(isSidecar(folder / "a.json"));
    EXPECT_EQ(readSidecar(folder / "a.json").frames.size(), 3U);
}

TEST(Sidecar, FindsTheFileWhateverItsLetters)
{
    const TemporaryFolder folder;
    const std::filesystem::path output = folder.path() / u8"K\u00FC.part";
    std::ofstream(output) << "frames";
    const SidecarFile file(folder / "a.json", IfThere::Refuse, {{"camera", ""}}, output,
                           IfThere::Refuse, 1);
    const auto found = findUnfinished(folder / "a.json");
    ASSERT_TRUE(found);
    EXPECT_TRUE(equivalent(found->output, output));
}

TEST(Sidecar, FindsNoAccountInOtherFiles)
{
    const TemporaryFolder folder;
    for (const char* text :
         {"", "{", "[]", "{}", R"({"format": "telvo-unfinished"})",
          R"({"format": "telvo-unfinished", "output": 7})",
          R"({"format": "telvo-unfinished", "output": "missing", "about": {}})"}) {
        std::ofstream(folder / "a.json.0123abcd.part") << text << '\n';
        EXPECT_FALSE(findUnfinished(folder / "a.json")) << text;
    }
}

TEST(Sidecar, TakesNoFrameFromALineThatDoesNotEnd)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "a.json.0123abcd.part")
        << R"({"format": "telvo-unfinished", "output": ".", "about": {}})"
        << "\n1 1000 1 4 0\n2 2000 2 4 0\n3 3000 3 4";
    EXPECT_EQ(findUnfinished(folder / "a.json").value().sidecar.frames.size(), 2U);
}

TEST(Sidecar, DoesNotChooseBetweenTwoUnfinishedSeries)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "other");
    std::ofstream(folder / "a.json.00000001.part")
        << R"({"format": "telvo-unfinished", "output": ".", "about": {}})"
        << "\n1 1000 1 4 0\n";
    std::ofstream(folder / "a.json.00000002.part")
        << R"({"format": "telvo-unfinished", "output": ".", "about": {}})"
        << "\n";
    const auto found = findUnfinished(folder / "a.json");
    EXPECT_EQ(found.value().sidecar.frames.size(), 1U) << "both are of one series";
    EXPECT_EQ(found->journals.size(), 2U);
    std::ofstream(folder / "a.json.00000003.part")
        << R"({"format": "telvo-unfinished", "output": "other", "about": {}})"
        << "\n";
    EXPECT_THROW(findUnfinished(folder / "a.json"), Failure);
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
