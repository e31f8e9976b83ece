#include "PngFile.h"

#include "Failure.h"
#include "OutputFile.h"

#include <png.h>
#include <string>

namespace telvo
{

std::vector<std::uint8_t> encodePng(GrayView image)
{
    if (image.pixels.empty() || image.pixels.size() < std::size_t{image.width} * image.height) {
        throw Failure("a picture without pixels cannot be written");
    }
    png_image description{};
    description.version = PNG_IMAGE_VERSION;
    description.width = image.width;
    description.height = image.height;
    description.format = PNG_FORMAT_GRAY;
    description.flags = PNG_IMAGE_FLAG_FAST;

    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(description);
    std::vector<std::uint8_t> file(size);
    if (png_image_write_to_memory(&description, file.data(), &size, 0, image.pixels.data(),
                                  static_cast<png_int_32>(image.width), nullptr) == 0) {
        throw Failure("cannot encode a picture: " +
                      std::string(static_cast<const char*>(description.message)));
    }
    file.resize(size);
    return file;
}

void writePngFile(const std::filesystem::path& path, GrayView image)
{
    const std::vector<std::uint8_t> bytes = encodePng(image);
    OutputFile file(path);
    file.write(bytes);
    file.commit();
}

} // namespace telvo
