/// What the sink for videos writes is read back by another program.
#include "VideoFileSink.h"
#include "PictureStyle.h"
#include "TemporaryFolder.h"
#include "ToolProcess.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>

namespace
{

using namespace telvo;

constexpr PictureStyle kGray{.keepHeader = true};
constexpr PictureStyle kColour{.colour = BayerPattern::RG};

/// Nothing that could be foretold: no encoder makes it smaller.
GrayImage noise(std::uint32_t width, std::uint32_t height)
{
    GrayImage frame(width, height);
    std::ranges::generate(frame.pixels, [bits = std::mt19937(width)]() mutable {
        return static_cast<std::uint8_t>(bits());
    });
    return frame;
}

std::unique_ptr<FrameSink> makeSink(const std::filesystem::path& path, VideoKind kind,
                                    const PictureStyle& style = kGray)
{
    return makeVideoSink(std::make_unique<OutputFile>(path), kind, style, 25);
}

void write(const std::filesystem::path& path, GrayView frame, const PictureStyle& style)
{
    const auto sink = makeSink(path, VideoKind::Lossless, style);
    for (int i = 0; i < 2; ++i) {
        sink->put(0, frame);
    }
    sink->finish();
}

std::string played(const std::filesystem::path& path, const char* pixels)
{
    const ToolOutcome result = runProgram(
        {"ffmpeg", "-v", "error", "-i", path, "-f", "rawvideo", "-pix_fmt", pixels, "-"});
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    return result.output;
}

std::string twice(const Picture& picture)
{
    const std::string pixels(picture.pixels.begin(), picture.pixels.end());
    return pixels + pixels;
}

/// A figure in KiB of this process's memory.
long memory(const std::string& name)
{
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word && word != name + ":") {
    }
    long size = 0;
    status >> size;
    return size;
}

std::ptrdiff_t threads()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
}

class VideoOfNoise : public testing::TestWithParam<std::pair<std::uint32_t, std::uint32_t>>
{
};

INSTANTIATE_TEST_SUITE_P(OfSize, VideoOfNoise,
                         testing::Values(std::pair(640, 480), std::pair(17, 7), std::pair(16, 300),
                                         std::pair(1280, 3)));

TEST_P(VideoOfNoise, KeepsEveryPixel)
{
    const TemporaryFolder folder;
    const GrayImage frame = noise(GetParam().first, GetParam().second);
    write(folder / "gray.mkv", frame.view(), kGray);
    EXPECT_TRUE(played(folder / "gray.mkv", "gray") == twice(renderPicture(frame.view(), kGray)));
    write(folder / "colour.mkv", frame.view(), kColour);
    EXPECT_TRUE(played(folder / "colour.mkv", "rgb24") ==
                twice(renderPicture(frame.view(), kColour)));
}

TEST(VideoFileSink, TakesLittleMemoryForALosslessVideo)
{
    const TemporaryFolder folder;
    const GrayImage frame = noise(1280, 1024);
    std::ofstream("/proc/self/clear_refs") << 5; // the peak starts anew
    const long before = memory("VmRSS");
    write(folder / "a.mkv", frame.view(), kGray);
    EXPECT_LT(memory("VmHWM") - before, 80 << 10);
}

TEST(VideoFileSink, WorksOnFewPicturesAtOnce)
{
    const TemporaryFolder folder;
    const std::ptrdiff_t before = threads();
    const auto sink = makeSink(folder / "a.mp4", VideoKind::Report);
    for (int i = 0; i < 20; ++i) {
        sink->put(0, noise(640, 480).view());
    }
    EXPECT_LE(threads() - before, 3) << "two, and one that looks ahead";
    sink->finish();
}

} // namespace
