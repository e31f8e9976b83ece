/// Where a download writes to, and where it refuses to.
#include "RecordedCamera.h"
#include "SmallDisk.h"

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr std::uint32_t kOutputFrames = 300;

class DownloadOutput : public RecordedCamera
{
  protected:
    void SetUp() override { start(recordedCamera(kOutputFrames)); }

    std::string recording() const { return recorded(0, kOutputFrames); }
    void expectCameraWasNotAsked() const { EXPECT_EQ(camera->log().counters().commands, 0U); }
};

TEST_F(DownloadOutput, LeavesAFileThatIsThere)
{
    std::ofstream(folder / "there") << "earlier";
    const ToolOutcome result = runTool(download("there"));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("is there already; --force replaces it"));
    EXPECT_EQ(contents(folder / "there"), "earlier");
    EXPECT_EQ(entries(folder.path()), 1U);
    expectCameraWasNotAsked();
}

TEST_F(DownloadOutput, LeavesASidecarThatIsThere)
{
    std::ofstream(folder / "new.json") << "earlier";
    const ToolOutcome result = runTool(download("new"));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("new.json is there already"));
    EXPECT_EQ(entries(folder.path()), 1U);
}

TEST_F(DownloadOutput, ReplacesAFileByForceAndFollowsItsLink)
{
    std::ofstream(folder / "there") << "earlier";
    fs::create_symlink("there", folder / "link");
    downloads("link", {"--force"});
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_TRUE(contents(folder / "there") == recording());
}

TEST_F(DownloadOutput, WritesToADeviceBehindALinkAndReplacesNeither)
{
    fs::create_symlink("/dev/null", folder / "link");
    downloads("link", {"--force"});
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_EQ(entries(folder.path()), 1U);
}

TEST_F(DownloadOutput, WritesToAFifo)
{
    ASSERT_EQ(mkfifo((folder / "fifo").c_str(), 0600), 0);
    std::string read;
    std::jthread reader([&] { read = contents(folder / "fifo"); });
    downloads("fifo");
    reader.join();
    EXPECT_TRUE(read == recording());
    EXPECT_TRUE(fs::is_fifo(folder / "fifo"));
    EXPECT_EQ(entries(folder.path()), 1U);
}

TEST_F(DownloadOutput, WaitsForTheReaderOfAFifoUntilTheUserHasEnough)
{
    ASSERT_EQ(mkfifo((folder / "fifo").c_str(), 0600), 0);
    ToolProcess process(download("fifo"));
    EXPECT_FALSE(process.endsWithin(300ms));
    process.signal(SIGINT);
    EXPECT_TRUE(process.endsWithin(2s));
    EXPECT_EQ(process.wait().exitStatus, 1);
    expectCameraWasNotAsked();
}

TEST_F(DownloadOutput, WritesTheFramesAloneToTheStandardOutput)
{
    const ToolOutcome result = runProgram(
        {"sh", "-c",
         toolLine({"download", "--camera", "127.0.0.11", "--out", "/dev/stdout"}) + "| cat"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_TRUE(result.output == recording()) << result.output.size() << " bytes";
    EXPECT_THAT(result.errors, HasSubstr("frame counter: continuous"));
}

TEST_F(DownloadOutput, FailsOnAFullDevice)
{
    const ToolOutcome result =
        runTool({"download", "--camera", "127.0.0.11", "--out", "/dev/full"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("cannot write /dev/full"));
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(DownloadOutput, FailsWhenTheReaderOfAFifoGoesAway)
{
    ASSERT_EQ(mkfifo((folder / "fifo").c_str(), 0600), 0);
    std::jthread reader([&] { close(open((folder / "fifo").c_str(), O_RDONLY)); });
    const ToolOutcome result = runTool(download("fifo"));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("cannot write"));
}

TEST_F(DownloadOutput, FindsTargetsThatCannotBeBeforeItConnects)
{
    std::ofstream(folder / "file") << "x";
    fs::create_symlink("nowhere", folder / "dangling");
    const std::pair<const char*, const char*> kCases[] = {
        {"", "is a folder; name a file in it"},
        {"missing/file", "cannot write"},
        {"file/file", "cannot write"},
        {"dangling", "is a link to what is not there"}};
    for (const auto& [name, message] : kCases) {
        const ToolOutcome result = runTool(download(name));
        EXPECT_EQ(result.exitStatus, 1) << name;
        EXPECT_THAT(result.errors, HasSubstr(message));
    }
    EXPECT_THAT(runTool(download("file", {"--format", "png"})).errors,
                HasSubstr("is no folder; pictures go into one"));
    expectCameraWasNotAsked();
    EXPECT_EQ(entries(folder.path()), 2U);
}

TEST_F(DownloadOutput, WritesPicturesOnlyToANewOrEmptyFolder)
{
    fs::create_directory(folder / "mine");
    std::ofstream(folder / "mine" / "frame-000007.png") << "earlier";
    const ToolOutcome refused = runTool(download("mine", {"--format", "png", "--force"}));
    EXPECT_EQ(refused.exitStatus, 1);
    EXPECT_THAT(refused.errors, HasSubstr("is not empty"));
    EXPECT_EQ(contents(folder / "mine" / "frame-000007.png"), "earlier");
    EXPECT_EQ(entries(folder / "mine"), 1U);
    expectCameraWasNotAsked();

    fs::create_directory(folder / "empty");
    downloads("empty", {"--format", "png", "--count", "3"});
    EXPECT_EQ(entries(folder / "empty"), 4U) << "three pictures and the sidecar";
}

TEST_F(DownloadOutput, FindsTooLittleSpaceBeforeTheTransfer)
{
    const SmallDisk disk(folder / "disk", "size=400k");
    for (const char* format : {"raw", "tiff"}) {
        const ToolOutcome result = runTool(download("disk/file", {"--format", format}));
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_THAT(result.errors, HasSubstr("MB, and only 0.4 MB are free there"));
    }
    EXPECT_EQ(entries(folder / "disk"), 0U);
    EXPECT_LT(camera->log().counters().bytes, recording().size() / 4) << "a few single frames";
}

TEST_F(DownloadOutput, LeavesNoFolderWherePicturesDoNotFit)
{
    const SmallDisk disk(folder / "disk", "size=8k");
    const ToolOutcome result = runTool(download("disk/new/pictures", {"--format", "png"}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("are free there"));
    EXPECT_EQ(entries(folder / "disk"), 0U);
    fs::create_directory(folder / "disk" / "old");
    EXPECT_EQ(runTool(download("disk/old/pictures", {"--format", "png"})).exitStatus, 1);
    EXPECT_EQ(runTool(download("disk/old", {"--format", "png"})).exitStatus, 1);
    EXPECT_TRUE(fs::is_empty(folder / "disk" / "old")) << "which was there before";
}

TEST_F(DownloadOutput, FailsOnADiskThatFillsUpMeanwhile)
{
    // Less than pictures of plain noise take, more than the best that compressing could do.
    const SmallDisk disk(folder / "disk", "size=300k");
    const ToolOutcome result = runTool(download("disk/pictures", {"--format", "png"}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("No space left on device"));
    for (const auto& entry : fs::directory_iterator(folder / "disk" / "pictures")) {
        EXPECT_NE(entry.path().extension(), ".part"); // what is there is whole
    }
}

TEST_F(DownloadOutput, GivesTheNameToOneOfTwoProcesses)
{
    camera::VirtualCamera other(recordedCamera(kOutputFrames, "127.0.0.12"));
    ASSERT_FALSE(other.start());
    ASSERT_TRUE(hasFinished(other));
    ToolProcess processes[] = {
        ToolProcess(download("same")),
        ToolProcess({"download", "--camera", "127.0.0.12", "--out", folder / "same"})};
    const ToolOutcome results[] = {processes[0].wait(), processes[1].wait()};
    ASSERT_EQ(results[0].exitStatus + results[1].exitStatus, 1)
        << results[0].errors << results[1].errors;
    const bool firstWon = results[0].exitStatus == 0;
    EXPECT_THAT(results[firstWon ? 1 : 0].errors,
                testing::AnyOf(HasSubstr("is there already"),
                               HasSubstr("was made by somebody else meanwhile")));
    const std::vector<std::uint8_t> winner = recordedBytes(
        firstWon ? *camera : other, {.sequence = 0, .first = 0, .count = kOutputFrames});
    EXPECT_TRUE(contents(folder / "same") == std::string(winner.begin(), winner.end()));
    EXPECT_EQ(jsonOf(folder / "same.json")["camera"]["ip-address"],
              firstWon ? "127.0.0.11" : "127.0.0.12");
}

} // namespace
