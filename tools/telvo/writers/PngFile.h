#ifndef TELVO_TOOLS_TELVO_WRITERS_PNGFILE_H
#define TELVO_TOOLS_TELVO_WRITERS_PNGFILE_H

#include "GrayImage.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace telvo
{

/// The picture as a PNG file's bytes: 8-bit gray, every pixel kept, compressed for speed.
/// Throws Failure for a picture of no size or fewer pixels than width * height.
std::vector<std::uint8_t> encodePng(GrayView image);

/// Writes the picture; the file appears under its name only when complete. Throws Failure.
void writePngFile(const std::filesystem::path& path, GrayView image);

} // namespace telvo

#endif
