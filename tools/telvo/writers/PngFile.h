#ifndef TELVO_TOOLS_TELVO_WRITERS_PNGFILE_H
#define TELVO_TOOLS_TELVO_WRITERS_PNGFILE_H

#include "OutputFile.h"
#include "Picture.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace telvo
{

/// The picture as a PNG file's bytes: 8 bits a channel, every pixel kept, compressed for speed.
/// Throws Failure for a picture of no size or of fewer bytes than its size takes.
std::vector<std::uint8_t> encodePng(PictureView picture);

/// Writes the picture; the file appears under its name only when complete. Throws Failure.
void writePngFile(const std::filesystem::path& path, PictureView picture,
                  IfThere ifThere = IfThere::Refuse);

} // namespace telvo

#endif
