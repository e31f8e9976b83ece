/// What a download writes, read back by programs of others and compared with what was recorded.
#include "RecordedCamera.h"

#include <cstdlib>
#include <gmock/gmock.h>

namespace
{

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr std::uint32_t kFrames = 40;
constexpr std::size_t kWidth = 64;

class DownloadFormat : public RecordedCamera
{
  protected:
    std::string shown() const { return withoutHeaders(recorded(0, kFrames), kWidth, frameSize()); }

    /// All pictures of a file one after the other, as an independent program reads them.
    std::string decoded(const std::string& file, const char* form = "gray") const
    {
        const ToolOutcome result = runProgram(
            {"convert-im6.q16", folder.path() / file, "-depth", "8", std::string(form) + ":-"});
        EXPECT_EQ(result.exitStatus, 0) << result.errors;
        return result.output;
    }

    /// All pictures of a video.
    std::string played(const std::string& file, const char* pixels = "gray") const
    {
        const ToolOutcome result = runProgram({"ffmpeg", "-v", "error", "-i", folder.path() / file,
                                               "-f", "rawvideo", "-pix_fmt", pixels, "-"});
        EXPECT_EQ(result.exitStatus, 0) << result.errors;
        return result.output;
    }

    std::string probed(const std::string& file) const
    {
        return runProgram({"ffprobe", "-v", "error", "-count_frames", "-show_entries",
                           "stream=codec_name,r_frame_rate,nb_read_frames", "-of",
                           "default=noprint_wrappers=1", folder.path() / file})
            .output;
    }
};

TEST_F(DownloadFormat, RawIsWhatTheCameraRecorded)
{
    start(recordedCamera(kFrames));
    downloads("a.raw");
    EXPECT_TRUE(contents(folder / "a.raw") == recorded(0, kFrames));
}

TEST_F(DownloadFormat, TiffHasAPageForEachFrame)
{
    start(recordedCamera(kFrames));
    downloads("a.tif", {"--format", "tiff"});
    EXPECT_TRUE(decoded("a.tif") == shown());
    const std::string info = runProgram({"tiffinfo", folder / "a.tif"}).output;
    EXPECT_THAT(info, HasSubstr("Image Width: 64 Image Length: 48"));
    EXPECT_THAT(info, HasSubstr("Photometric Interpretation: min-is-black"));
    EXPECT_THAT(info, HasSubstr("=== TIFF directory 39 ==="));
    EXPECT_THAT(info, testing::Not(HasSubstr("=== TIFF directory 40 ===")));
}

TEST_F(DownloadFormat, IsWhatTheNameEndsWith)
{
    start(recordedCamera(kFrames));
    downloads("a.tif");
    EXPECT_TRUE(decoded("a.tif") == shown());
    EXPECT_EQ(jsonOf(folder / "a.tif.json")["pictures"]["file-format"], "tiff");
}

TEST_F(DownloadFormat, PngIsAPictureForEachFrame)
{
    start(recordedCamera(kFrames));
    downloads("a", {"--format", "png"});
    EXPECT_EQ(entries(folder / "a"), kFrames + 1U) << "pictures and the sidecar";
    EXPECT_TRUE(decoded("a/frame-*.png") == shown());
}

TEST_F(DownloadFormat, HeadersAreKeptForThoseWhoWantThem)
{
    start(recordedCamera(kFrames));
    downloads("a.tif", {"--format", "tiff", "--keep-header"});
    EXPECT_TRUE(decoded("a.tif") == recorded(0, kFrames));
    EXPECT_EQ(jsonOf(folder / "a.tif.json")["pictures"]["header"], "kept");
}

TEST_F(DownloadFormat, MkvKeepsEveryPixel)
{
    start(recordedCamera(kFrames));
    downloads("a.mkv", {"--format", "mkv", "--playback-fps", "10"});
    EXPECT_TRUE(played("a.mkv") == shown());
    EXPECT_EQ(probed("a.mkv"), "codec_name=ffv1\nr_frame_rate=10/1\nnb_read_frames=40\n");
}

TEST_F(DownloadFormat, Mp4ShowsEveryFrame)
{
    start(recordedCamera(kFrames));
    downloads("a.mp4", {"--format", "mp4"});
    EXPECT_EQ(probed("a.mp4"), "codec_name=h264\nr_frame_rate=25/1\nnb_read_frames=40\n");
    const std::string video = played("a.mp4");
    const std::string frames = shown();
    ASSERT_EQ(video.size(), frames.size());
    double difference = 0;
    for (std::size_t i = 0; i < video.size(); ++i) {
        difference +=
            std::abs(static_cast<unsigned char>(video[i]) - static_cast<unsigned char>(frames[i]));
    }
    EXPECT_LT(difference / static_cast<double>(video.size()), 5.0) << "gray values on average";
}

TEST_F(DownloadFormat, ColoursAreWorkedOutOfTheFilter)
{
    camera::CameraOptions options = recordedCamera(4);
    options.colour = true;
    start(options);
    downloads("a.tif", {"--format", "tiff", "--colour"});
    const std::string raw = withoutHeaders(recorded(0, 4), kWidth, frameSize());
    const std::string pictures = decoded("a.tif", "rgb");
    ASSERT_EQ(pictures.size(), 3 * raw.size());
    for (std::size_t i = 0; i < raw.size(); ++i) {
        const std::size_t colour = i % kWidth % 2 + i / kWidth % 2; // red, green, green, blue
        ASSERT_EQ(pictures[3 * i + colour], raw[i]) << i;
    }
    EXPECT_THAT(runProgram({"tiffinfo", folder / "a.tif"}).output,
                HasSubstr("Photometric Interpretation: RGB color"));
    EXPECT_EQ(jsonOf(folder / "a.tif.json")["pictures"]["pixel-format"], "RGB8");

    downloads("a.mkv", {"--format", "mkv", "--colour"});
    EXPECT_TRUE(played("a.mkv", "rgb24") == pictures);
    downloads("plain.tif", {"--format", "tiff"});
    EXPECT_TRUE(decoded("plain.tif") == raw);
    EXPECT_EQ(jsonOf(folder / "plain.tif.json")["pictures"]["pixel-format"], "BayerRG8");
}

TEST_F(DownloadFormat, ColoursNeedAColourCamera)
{
    start(recordedCamera(kFrames));
    const ToolOutcome result = runTool(download("a.tif", {"--format", "tiff", "--colour"}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("this camera has no colours"));
    EXPECT_EQ(entries(folder.path()), 0U);
}

TEST_F(DownloadFormat, WhatNeedsAFileIsNotWrittenToADevice)
{
    start(recordedCamera(kFrames));
    for (const char* format : {"tiff", "mp4"}) {
        const ToolOutcome result = runTool(
            {"download", "--camera", "127.0.0.11", "--format", format, "--out", "/dev/null"});
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_THAT(result.errors, HasSubstr("cannot be written to a FIFO or a device"));
    }
}

TEST_F(DownloadFormat, WrongCombinationsAreFoundAtOnce)
{
    start(recordedCamera(1));
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"--format", "mkv", "--resume"},
          {"--colour", "--keep-header"},
          {"--around-trigger", "5", "--first", "1"},
          {"--force", "--resume"},
          {"--format", "mp4", "--playback-fps", "0"}}) {
        EXPECT_EQ(runTool(download("a", words)).exitStatus, 2);
    }
    EXPECT_EQ(entries(folder.path()), 0U);
}

} // namespace
