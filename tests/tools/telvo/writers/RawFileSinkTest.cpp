#include "RawFileSink.h"
#include "Failure.h"
#include "FileContents.h"
#include "TemporaryFolder.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>

namespace
{

using namespace telvo;

GrayImage plain(std::uint8_t value)
{
    GrayImage frame(4, 2);
    std::ranges::fill(frame.pixels, value);
    return frame;
}

TEST(RawFileSink, WritesFramesAsTheyCome)
{
    const TemporaryFolder folder;
    RawFileSink sink(std::make_unique<OutputFile>(folder / "a"), {});
    sink.put(0, plain('a').view());
    sink.put(1, plain('b').view());
    sink.finish();
    EXPECT_EQ(contents(folder / "a"), "aaaaaaaabbbbbbbb");
}

TEST(RawFileSink, ContinuesBehindTheFramesThatAreThere)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "a") << "aaaaaaaaxxx"; // the second frame came only in part
    RawFileSink sink(std::make_unique<OutputFile>(folder / "a", IfThere::Continue), {}, 8);
    sink.put(1, plain('b').view());
    sink.finish();
    EXPECT_EQ(contents(folder / "a"), "aaaaaaaabbbbbbbb");
}

TEST(RawFileSink, DoesNotContinueAFileThatLacksFrames)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "a") << "aaa";
    EXPECT_THROW(RawFileSink(std::make_unique<OutputFile>(folder / "a", IfThere::Continue), {}, 8),
                 Failure);
}

TEST(RawFileSink, WritesThreeBytesAPixelInColours)
{
    const TemporaryFolder folder;
    RawFileSink sink(std::make_unique<OutputFile>(folder / "a"), {.colour = BayerPattern::RG});
    sink.put(0, plain('a').view());
    sink.finish();
    EXPECT_EQ(std::filesystem::file_size(folder / "a"), 4U * 2 * 3);
}

} // namespace
