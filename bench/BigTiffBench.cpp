/**
 * A TIFF file beyond the 4 GB that classic TIFF can count: written page by page as a download
 * writes it, interrupted behind 4 GB and continued, then read back whole. Ends with 1 if a pixel is
 * not what was written.
 */
#include "Require.h"
#include "TiffFileSink.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <tiffio.h>
#include <unistd.h>
#include <vector>

namespace
{

using namespace telvo;
using Clock = std::chrono::steady_clock;

constexpr std::uint32_t kWidth = 1280;
constexpr std::uint32_t kHeight = 1024;
constexpr std::uint32_t kPages = 3600; // 4.7 GB
constexpr std::uint32_t kFirstPart = 3400;
constexpr double kBytes = double{kWidth} * kHeight * kPages;
constexpr PictureStyle kAsItIs{.keepHeader = true};

/// Each page has pixels of its own.
void fill(GrayImage& frame, std::uint32_t page)
{
    const std::uint32_t step = 1 + page % 251;
    std::uint32_t value = page;
    for (std::uint8_t& pixel : frame.pixels) {
        pixel = static_cast<std::uint8_t>(value >> 3);
        value += step;
    }
}

void writePages(FrameSink& sink, std::uint32_t from, std::uint32_t to)
{
    GrayImage frame(kWidth, kHeight);
    for (std::uint32_t page = from; page < to; ++page) {
        fill(frame, page);
        sink.put(page, frame.view());
    }
    sink.finish();
}

void write(const std::string& path)
{
    TiffFileSink sink(std::make_unique<OutputFile>(path), kAsItIs,
                      static_cast<std::uint64_t>(kBytes));
    writePages(sink, 0, kFirstPart);
    auto file = std::make_unique<OutputFile>(path, IfThere::Continue);
    writePages(*TiffFileSink::resume(std::move(file), kAsItIs, kFirstPart), kFirstPart, kPages);
}

void compare(const std::string& path)
{
    TIFF* const tiff = TIFFOpen(path.c_str(), "rc"); // strips as they are, not chopped
    require(tiff != nullptr, "opening the file");
    GrayImage expected(kWidth, kHeight);
    std::vector<std::uint8_t> pixels(expected.pixels.size());
    std::uint32_t page = 0;
    do {
        const auto size = static_cast<tmsize_t>(pixels.size());
        require(TIFFReadEncodedStrip(tiff, 0, pixels.data(), size) == size, "reading a page");
        fill(expected, page++);
        require(pixels == expected.pixels, "finding the page's pixels");
    } while (TIFFReadDirectory(tiff) == 1);
    require(page == kPages, "finding all pages");
    TIFFClose(tiff);
}

double secondsOf(const auto& work)
{
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

} // namespace

/// @param argv  folder for the file [the present one]
int main(int argc, char** argv)
{
    return exitStatus([&] {
        const std::string path = std::string(argc > 1 ? argv[1] : ".") + "/bench-big-tiff-" +
                                 std::to_string(getpid()) + ".tif";
        const double writing = secondsOf([&] { write(path); });
        std::printf("BigTIFF of %.1f GB, written %6.2f GB/s\n",
                    static_cast<double>(std::filesystem::file_size(path)) * 1e-9,
                    kBytes / writing * 1e-9);
        const double reading = secondsOf([&] { compare(path); });
        std::printf("%u pages read back as written %6.2f GB/s\n", kPages, kBytes / reading * 1e-9);
        std::filesystem::remove(path);
    });
}
