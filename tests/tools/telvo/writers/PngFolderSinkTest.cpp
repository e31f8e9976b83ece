#include "PngFolderSink.h"
#include "Failure.h"
#include "TemporaryFolder.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace telvo;

TEST(PngFolderSink, WritesPicturesUnderTheirNumbers)
{
    const TemporaryFolder folder;
    PngFolderSink sink(folder / "new");
    const GrayImage frame(32, 8);
    sink.put(0, frame.view());
    sink.put(1'234'567, frame.view());
    sink.finish();
    EXPECT_TRUE(std::filesystem::exists(folder / "new" / "frame-000000.png"));
    EXPECT_TRUE(std::filesystem::exists(folder / "new" / "frame-1234567.png"));
}

TEST(PngFolderSink, RefusesAFolderThatIsNotEmpty)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "letter.txt") << "x";
    EXPECT_THROW(PngFolderSink sink(folder.path()), Failure);
}

TEST(PngFolderSink, HasItsFolderForItself)
{
    const TemporaryFolder folder;
    {
        const PngFolderSink sink(folder.path());
        EXPECT_THROW(PngFolderSink other(folder.path()), Failure);
    }
    const PngFolderSink next(folder.path());
}

TEST(PngFolderSink, ContinuesAFolderOfPictures)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "frame-000000.png") << "broken";
    const GrayImage frame(32, 8);
    PngFolderSink sink(folder.path(), {}, IfThere::Continue);
    sink.put(0, frame.view());
    sink.finish();
    EXPECT_GT(std::filesystem::file_size(folder / "frame-000000.png"), 50U);
}

TEST(PngFolderSink, RemovesWhatAKilledProcessLeftOfAPicture)
{
    const TemporaryFolder folder;
    for (const char* name : {"frame-000001.png", "frame-000002.png.0123abcd.part", "mine.part"}) {
        std::ofstream(folder / name) << "x";
    }
    PngFolderSink sink(folder.path(), {}, IfThere::Continue);
    EXPECT_TRUE(std::filesystem::exists(folder / "frame-000001.png"));
    EXPECT_FALSE(std::filesystem::exists(folder / "frame-000002.png.0123abcd.part"));
    EXPECT_TRUE(std::filesystem::exists(folder / "mine.part"));
}

} // namespace
