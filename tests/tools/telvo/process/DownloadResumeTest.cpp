/// Downloads that end before their last frame, and how they go on.
#include "CameraControl.h"
#include "RecordedCamera.h"
#include "SmallDisk.h"

#include <algorithm>
#include <csignal>
#include <fstream>
#include <gmock/gmock.h>
#include <limits>
#include <numeric>
#include <sys/stat.h>

namespace
{

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

constexpr std::uint32_t kResumeFrames = 3000; // three blocks
constexpr std::uint64_t kLinkRate = 100'000'000;

const std::vector<std::string> kQuickLoss{"--set", "heartbeat-timeout=1000", "--set",
                                          "heartbeat-interval=200"};

/// Bytes in a folder and below it.
std::uint64_t sizeOf(const fs::path& folder)
{
    std::uint64_t size = 0;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        std::error_code gone; // a partial file may have been renamed since
        const std::uint64_t bytes = entry.file_size(gone);
        size += gone || entry.is_directory(gone) ? 0 : bytes;
    }
    return size;
}

class DownloadResume : public RecordedCamera
{
  protected:
    void SetUp() override
    {
        camera::CameraOptions options = recordedCamera(kResumeFrames);
        options.settings[camera::FeatureId::AcquisitionFrameRateRaw] = 10'000;
        options.linkRate = linkRate(); // slow enough to come in between
        start(options);
    }
    virtual std::uint64_t linkRate() const { return kLinkRate; }

    static std::vector<std::string> withFormat(const char* format, std::vector<std::string> more)
    {
        more.insert(more.end(), {"--format", format});
        return more;
    }

    static fs::path sidecarOf(const fs::path& output, const char* format)
    {
        return output.string() + (std::string(format) == "png" ? "/recording.json" : ".json");
    }

    /// Continues it. @return how many frames were transferred
    std::uint32_t resumed(const std::string& name, const char* format) const
    {
        const ToolOutcome rest = downloads(name, withFormat(format, {"--resume", "--json"}));
        const nlohmann::json sidecar = jsonOf(sidecarOf(folder.path() / name, format));
        EXPECT_EQ(sidecar["complete"], true);
        EXPECT_EQ(sidecar["counter-check"]["whole"], true);
        EXPECT_EQ(sidecar["frames"].size(), kResumeFrames);
        return nlohmann::json::parse(rest.output)["transferred"];
    }

    /// Starts it, lets something else take the rest of the disk, and then free it again.
    void runOutOfSpace(const std::string& name, const char* format) const
    {
        ToolProcess process(download(name, withFormat(format, {})));
        EXPECT_TRUE(eventually([&] { return sizeOf(folder / "disk") > 200'000; }));
        const fs::path filler = folder / "disk/filler";
        std::ofstream(filler) << std::string(32 << 20, 'x') << std::flush;
        const ToolOutcome result = process.wait();
        fs::remove(filler);
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_THAT(result.errors, HasSubstr("No space left on device; "));
        EXPECT_THAT(result.errors, HasSubstr("of 3000 frames, --resume continues"));
        const nlohmann::json sidecar = jsonOf(sidecarOf(folder.path() / name, format));
        EXPECT_EQ(sidecar["complete"], false);
        EXPECT_GT(sidecar["frames"].size(), 0U);
        EXPECT_LT(sidecar["frames"].size(), kResumeFrames);
        EXPECT_EQ(sidecar["counter-check"]["received"], sidecar["frames"].size());
    }

    /// Starts it and sends the signal as soon as some frames are written.
    ToolOutcome interrupted(const std::string& name, const char* format, int signal = SIGINT) const
    {
        ToolProcess process(download(name, withFormat(format, {})));
        EXPECT_TRUE(eventually([&] { return sizeOf(folder.path()) > 200'000; }));
        process.signal(signal);
        return process.wait();
    }

    /// So many frames, and no more since.
    bool hasSent(std::uint64_t frames) const
    {
        const std::uint64_t bytes = camera->log().bytes;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        return bytes >= frames * frameSize() && bytes == camera->log().bytes;
    }

    /// Interrupts a download and continues it; the output is as that of one that was not.
    void expectContinued(const std::string& name, const char* format)
    {
        const ToolOutcome result = interrupted(name, format);
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_THAT(result.errors, HasSubstr("of 3000 frames, --resume continues"));
        const fs::path sidecar = sidecarOf(folder.path() / name, format);
        const nlohmann::json before = jsonOf(sidecar);
        EXPECT_EQ(before["complete"], false);
        EXPECT_EQ(before["counter-check"]["whole"], false);
        EXPECT_EQ(before["counter-check"]["expected"], kResumeFrames);
        EXPECT_GT(before["frames"].size(), 0U);
        EXPECT_LT(before["frames"].size(), kResumeFrames);

        const ToolOutcome rest = downloads(name, withFormat(format, {"--resume", "--json"}));
        EXPECT_EQ(nlohmann::json::parse(rest.output)["transferred"],
                  kResumeFrames - before["frames"].size());
        const nlohmann::json after = jsonOf(sidecar);
        EXPECT_EQ(after["complete"], true);
        EXPECT_EQ(after["counter-check"]["whole"], true);
        EXPECT_EQ(after["frames"].size(), kResumeFrames);
    }
};

TEST_F(DownloadResume, ARawFileHoldsWhatCameAndGoesOn)
{
    expectContinued("a.raw", "raw");
    EXPECT_TRUE(contents(folder / "a.raw") == recorded(0, kResumeFrames));
    EXPECT_EQ(entries(folder.path()), 2U);
    EXPECT_THAT(downloads("a.raw", {"--resume"}).output, HasSubstr("3000 of 3000 frames"));
}

TEST_F(DownloadResume, ATiffFileGoesOn)
{
    expectContinued("a.tif", "tiff");
    const ToolOutcome pages =
        runProgram({"convert-im6.q16", (folder / "a.tif").string() + "[995-1004,2999]", "-depth",
                    "8", "gray:-"});
    EXPECT_TRUE(pages.output ==
                withoutHeaders(recorded(995, 10) + recorded(2999, 1), 64, frameSize()));
}

TEST_F(DownloadResume, AFolderOfPicturesGoesOn)
{
    expectContinued("a", "png");
    EXPECT_EQ(entries(folder / "a"), kResumeFrames + 1U);
    const ToolOutcome last =
        runProgram({"convert-im6.q16", folder / "a/frame-002999.png", "-depth", "8", "gray:-"});
    EXPECT_TRUE(last.output == withoutHeaders(recorded(2999, 1), 64, frameSize()));
}

TEST_F(DownloadResume, AVideoThatWasInterruptedPlaysAsFarAsItGoes)
{
    const ToolOutcome result = interrupted("a.mkv", "mkv", SIGTERM);
    EXPECT_EQ(result.exitStatus, 1);
    const std::size_t frames = jsonOf(folder / "a.mkv.json")["frames"].size();
    const ToolOutcome played = runProgram({"ffmpeg", "-v", "error", "-i", folder / "a.mkv", "-f",
                                           "rawvideo", "-pix_fmt", "gray", "-"});
    EXPECT_EQ(played.output.size(), frames * frameSize());
}

TEST_F(DownloadResume, GoesOnAfterALostLink)
{
    ToolProcess process(download("a", kQuickLoss));
    EXPECT_TRUE(eventually([&] { return sizeOf(folder.path()) > 200'000; }));
    camera->faults().setSilent(true);
    const ToolOutcome result = process.wait();
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("the connection to the camera was lost"));
    camera->faults().setSilent(false);
    downloads("a", {"--resume"});
    EXPECT_TRUE(contents(folder / "a") == recorded(0, kResumeFrames));
}

TEST_F(DownloadResume, ALinkThatBreaksBetweenTwoBlocksIsNamed)
{
    const fs::path fifo = folder / "a.raw";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    ToolProcess process(download("a.raw", kQuickLoss));
    std::ifstream reader(fifo, std::ios::binary);
    ASSERT_TRUE(reader.is_open());
    ASSERT_TRUE(eventually([&] { return hasSent(2000); }));
    camera->faults().setSilent(true); // the tool has a block to write, and has got the next
    reader.ignore(std::numeric_limits<std::streamsize>::max());
    const std::string errors = process.wait().errors;
    EXPECT_THAT(errors, HasSubstr("the connection to the camera was lost"));
    EXPECT_THAT(errors, Not(HasSubstr("--resume"))) << "what went through a FIFO is gone";
}

TEST_F(DownloadResume, KeepsARawFileOnAFullDiskAndGoesOn)
{
    const SmallDisk disk(folder / "disk", "size=14m");
    runOutOfSpace("disk/a", "raw");
    EXPECT_EQ(contents(folder / "disk/a").size(),
              jsonOf(folder / "disk/a.json")["frames"].size() * frameSize());
    EXPECT_LT(resumed("disk/a", "raw"), kResumeFrames);
    EXPECT_TRUE(contents(folder / "disk/a") == recorded(0, kResumeFrames));
}

TEST_F(DownloadResume, KeepsATiffFileOnAFullDiskAndGoesOn)
{
    downloads("whole", withFormat("tiff", {}));
    const SmallDisk disk(folder / "disk", "size=14m");
    runOutOfSpace("disk/a", "tiff");
    EXPECT_LT(resumed("disk/a", "tiff"), kResumeFrames);
    EXPECT_TRUE(contents(folder / "disk/a") == contents(folder / "whole"));
}

TEST_F(DownloadResume, KeepsPicturesOnAFullDiskAndGoesOn)
{
    const SmallDisk disk(folder / "disk", "size=18m");
    runOutOfSpace("disk/a", "png");
    EXPECT_LT(resumed("disk/a", "png"), kResumeFrames);
    EXPECT_EQ(entries(folder / "disk/a"), kResumeFrames + 1U);
}

/// Slow enough for a busy machine to notice that some frames are written.
class DownloadKilled : public DownloadResume
{
  protected:
    std::uint64_t linkRate() const override { return kLinkRate / 3; }

    /// Whether an account of frames that are written lies in the folder.
    bool hasAccount() const
    {
        for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
            const bool isAccount = entry.path().stem().stem().extension() == ".json";
            const std::string text = isAccount ? contents(entry.path()) : "";
            if (text.starts_with(R"({"format":"telvo-unfinished")") &&
                std::ranges::count(text, '\n') > 1) {
                return true;
            }
        }
        return false;
    }

    /// Starts it and kills it in the middle; the camera is then free again.
    void killed(const std::string& name, const char* format) const
    {
        ToolProcess process(download(name, withFormat(format, kQuickLoss)));
        EXPECT_TRUE(eventually([&] { return hasAccount(); }));
        process.signal(SIGKILL);
        EXPECT_EQ(process.wait().exitStatus, -SIGKILL);
        EXPECT_FALSE(fs::exists(sidecarOf(folder.path() / name, format)));
        EXPECT_TRUE(eventually([&] { return isFree(*camera); }));
    }
};

TEST_F(DownloadKilled, ARawFileGoesOn)
{
    killed("a", "raw");
    EXPECT_FALSE(fs::exists(folder / "a"));
    EXPECT_EQ(runTool(download("a", {"--resume", "--first", "1"})).exitStatus, 1);
    EXPECT_EQ(entries(folder.path()), 2U) << "what was left is there still";
    EXPECT_LT(resumed("a", "raw"), kResumeFrames);
    EXPECT_TRUE(contents(folder / "a") == recorded(0, kResumeFrames));
    EXPECT_EQ(entries(folder.path()), 2U) << "no partial files are left";
}

TEST_F(DownloadKilled, ATiffFileGoesOn)
{
    killed("a", "tiff");
    EXPECT_LT(resumed("a", "tiff"), kResumeFrames);
    EXPECT_EQ(entries(folder.path()), 2U) << "no partial files are left";
    const ToolOutcome pages = runProgram(
        {"convert-im6.q16", (folder / "a").string() + "[995-1004,2999]", "-depth", "8", "gray:-"});
    EXPECT_TRUE(pages.output ==
                withoutHeaders(recorded(995, 10) + recorded(2999, 1), 64, frameSize()));
}

TEST_F(DownloadKilled, PicturesGoOn)
{
    killed("a", "png");
    EXPECT_LT(resumed("a", "png"), kResumeFrames);
    EXPECT_EQ(entries(folder / "a"), kResumeFrames + 1U);
}

TEST_F(DownloadResume, DoesNotMixOneRecordingWithAnother)
{
    EXPECT_EQ(interrupted("a", "raw").exitStatus, 1);
    const std::string before = contents(folder / "a");
    EXPECT_THAT(runTool(download("a", {"--resume", "--first", "1"})).errors,
                HasSubstr("the interrupted download differs in its selection"));
    camera->stop();
    camera::CameraOptions options = recordedCamera(kResumeFrames);
    options.settings[camera::FeatureId::AcquisitionFrameRateRaw] = 9000;
    start(options);
    EXPECT_THAT(runTool(download("a", {"--resume"})).errors,
                HasSubstr("recording is not that of the interrupted download"));
    EXPECT_TRUE(contents(folder / "a") == before);
}

TEST_F(DownloadResume, BeginsWhereNothingIsThere)
{
    downloads("a", {"--resume", "--count", "10"});
    EXPECT_TRUE(contents(folder / "a") == recorded(0, 10));
}

} // namespace
