#include "TiffFileSink.h"
#include "Failure.h"
#include "FileContents.h"
#include "TemporaryFolder.h"

#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tiffio.h>

namespace
{

using namespace telvo;
using testing::ElementsAre;

constexpr PictureStyle kAsItIs{.keepHeader = true};

GrayImage evenPicture(std::uint8_t value)
{
    GrayImage frame(32, 3);
    std::ranges::fill(frame.pixels, value);
    return frame;
}

/// The first pixel of each page, all of which have to be alike.
std::vector<int> pagesOf(const std::filesystem::path& path)
{
    std::vector<int> pages;
    TIFF* const tiff = TIFFOpen(path.string().c_str(), "r");
    EXPECT_NE(tiff, nullptr);
    do {
        std::vector<std::uint8_t> pixels(static_cast<std::size_t>(TIFFStripSize(tiff)));
        EXPECT_EQ(TIFFReadEncodedStrip(tiff, 0, pixels.data(), -1), TIFFStripSize(tiff));
        EXPECT_THAT(pixels, testing::Each(pixels.front()));
        pages.push_back(pixels.front());
    } while (TIFFReadDirectory(tiff) == 1);
    TIFFClose(tiff);
    return pages;
}

void write(const std::filesystem::path& path, int pages, std::uint64_t expected = 0)
{
    TiffFileSink sink(std::make_unique<OutputFile>(path), kAsItIs, expected);
    for (int i = 0; i < pages; ++i) {
        sink.put(0, evenPicture(static_cast<std::uint8_t>(i)).view());
    }
    sink.finish();
}

TEST(TiffFileSink, WritesAPageForEachFrame)
{
    const TemporaryFolder folder;
    write(folder / "a.tif", 3);
    EXPECT_THAT(pagesOf(folder / "a.tif"), ElementsAre(0, 1, 2));
}

TEST(TiffFileSink, IsBigTiffWhereFourGigabytesAreExpected)
{
    const TemporaryFolder folder;
    write(folder / "small.tif", 1, 4'000'000'000);
    write(folder / "big.tif", 2, 4'300'000'000);
    const auto versionOf = [](const std::filesystem::path& path) {
        std::ifstream file(path, std::ios::binary);
        file.seekg(2);
        return file.get();
    };
    EXPECT_EQ(versionOf(folder / "small.tif"), 42);
    EXPECT_EQ(versionOf(folder / "big.tif"), 43);
    EXPECT_THAT(pagesOf(folder / "big.tif"), ElementsAre(0, 1));
}

TEST(TiffFileSink, ContinuesBehindThePagesThatAreThere)
{
    const TemporaryFolder folder;
    for (const std::uint64_t expected : {std::uint64_t{0}, std::uint64_t{1} << 33}) {
        const auto path = folder.path() / std::to_string(expected);
        write(path, 4, expected);
        const auto sink =
            TiffFileSink::resume(std::make_unique<OutputFile>(path, IfThere::Continue), kAsItIs, 2);
        sink->put(2, evenPicture(20).view());
        sink->put(3, evenPicture(30).view());
        sink->finish();
        EXPECT_THAT(pagesOf(path), ElementsAre(0, 1, 20, 30));
    }
}

TEST(TiffFileSink, IsContinuedByteForByteWhereverItWasCutOff)
{
    const TemporaryFolder folder;
    for (const std::uint64_t expected : {std::uint64_t{0}, std::uint64_t{1} << 33}) {
        const auto path = folder.path() / std::to_string(expected);
        write(path, 3, expected);
        const std::string whole = contents(path);
        write(folder.path() / "two", 2, expected);
        const std::size_t twoPages = contents(folder.path() / "two").size();
        std::filesystem::remove(folder.path() / "two");
        for (std::size_t size = twoPages; size <= whole.size(); ++size) {
            std::filesystem::resize_file(path, size);
            auto sink = TiffFileSink::resume(std::make_unique<OutputFile>(path, IfThere::Continue),
                                             kAsItIs, 2);
            sink->put(2, evenPicture(2).view());
            EXPECT_EQ(sink->written(), 1U);
            sink->finish();
            ASSERT_TRUE(contents(path) == whole) << size;
        }
    }
}

TEST(TiffFileSink, DoesNotContinueWhatIsNoSuchFile)
{
    const TemporaryFolder folder;
    write(folder / "short.tif", 1);
    std::ofstream(folder / "letter.txt") << "no TIFF";
    for (const char* name : {"short.tif", "letter.txt"}) {
        auto file = std::make_unique<OutputFile>(folder / name, IfThere::Continue);
        EXPECT_THROW(TiffFileSink::resume(std::move(file), kAsItIs, 2), Failure);
    }
}

TEST(TiffFileSink, TakesManyPagesInTime)
{
    const TemporaryFolder folder;
    write(folder / "a.tif", 20'000);
    TIFF* const tiff = TIFFOpen((folder / "a.tif").string().c_str(), "r");
    EXPECT_EQ(TIFFNumberOfDirectories(tiff), 20'000U);
    TIFFClose(tiff);
}

} // namespace
