#include "PngFile.h"

#include "Failure.h"
#include "OutputFile.h"

#include <png.h>
#include <string>

namespace telvo
{

std::vector<std::uint8_t> encodePng(PictureView picture)
{
    if (picture.pixels.empty() || picture.pixels.size() < picture.size()) {
        throw Failure("a picture without pixels cannot be written");
    }
    png_image description{};
    description.version = PNG_IMAGE_VERSION;
    description.width = picture.width;
    description.height = picture.height;
    description.format = picture.channels == 1 ? PNG_FORMAT_GRAY : PNG_FORMAT_RGB;
    description.flags = PNG_IMAGE_FLAG_FAST;

    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(description);
    std::vector<std::uint8_t> file(size);
    if (png_image_write_to_memory(&description, file.data(), &size, 0, picture.pixels.data(),
                                  static_cast<png_int_32>(picture.rowSize()), nullptr) == 0) {
        throw Failure("cannot encode a picture: " +
                      std::string(static_cast<const char*>(description.message)));
    }
    file.resize(size);
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
