#include "PngFile.h"

#include "Failure.h"
#include "OutputFile.h"

#include <csetjmp>
#include <png.h>

namespace telvo
{

namespace
{

/// More than deflate and the file's chunks add to pixels that cannot be squeezed.
std::size_t sizeAtMost(std::size_t pixels)
{
    constexpr std::size_t kChunks = 4096;
    return pixels + pixels / 256 + kChunks;
}

/// What libpng calls; no exception may go through it.
void append(png_structp png, png_bytep bytes, std::size_t size)
{
    auto& file = *static_cast<std::vector<std::uint8_t>*>(png_get_io_ptr(png));
    if (file.capacity() - file.size() < size) {
        png_error(png, "more bytes than expected");
    }
    file.insert(file.end(), bytes, bytes + size);
}

void flushNothing(png_structp /*png*/) {}

/// libpng's objects for one file.
class PngWriting
{
  public:
    explicit PngWriting(std::vector<std::uint8_t>& file)
        : mPng(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr)),
          mInfo(mPng == nullptr ? nullptr : png_create_info_struct(mPng))
    {
        if (mInfo != nullptr) {
            png_set_write_fn(mPng, &file, append, flushNothing);
        }
    }
    ~PngWriting() { png_destroy_write_struct(&mPng, &mInfo); }
    PngWriting(const PngWriting&) = delete;
    PngWriting& operator=(const PngWriting&) = delete;

    /// libpng comes back here with an error, so that nothing in it has a destructor.
    /// @return false: it failed
    bool write(const PictureView& picture)
    {
        if (mInfo == nullptr || setjmp(png_jmpbuf(mPng)) != 0) {
            return false;
        }
        png_set_IHDR(mPng, mInfo, picture.width, picture.height, 8,
                     picture.channels == 1 ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_RGB,
                     PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_BASE, PNG_FILTER_TYPE_BASE);
        // The difference to the row above, then runs of equal bytes: of what zlib can do, the
        // fastest, and for a camera's pictures the smallest but for its slowest.
        png_set_filter(mPng, PNG_FILTER_TYPE_BASE, PNG_FILTER_UP);
        png_set_compression_level(mPng, 1);
        png_set_compression_strategy(mPng, kRuns);
        png_write_info(mPng, mInfo);
        for (std::size_t y = 0; y < picture.height; ++y) {
            png_write_row(mPng, picture.pixels.data() + y * picture.rowSize());
        }
        png_write_end(mPng, mInfo);
        return true;
    }

  private:
    static constexpr int kRuns = 3; // zlib's Z_RLE

    png_structp mPng;
    png_infop mInfo;
};

} // namespace

std::vector<std::uint8_t> encodePng(PictureView picture)
{
    if (picture.pixels.empty() || picture.pixels.size() < picture.size()) {
        throw Failure("a picture without pixels cannot be written");
    }
    std::vector<std::uint8_t> file;
    file.reserve(sizeAtMost(picture.size()));
    if (!PngWriting(file).write(picture)) {
        throw Failure("cannot encode a picture as PNG; is there too little memory?");
    }
    return file;
}

void writePngFile(const std::filesystem::path& path, PictureView picture, IfThere ifThere)
{
    const std::vector<std::uint8_t> bytes = encodePng(picture);
    OutputFile file(path, ifThere);
    file.write(bytes);
    file.commit();
}

} // namespace telvo
