#ifndef TELVO_CAMERA_ZIPFILE_H
#define TELVO_CAMERA_ZIPFILE_H

#include <cstdint>
#include <string>
#include <vector>

namespace camera
{

/// A ZIP archive with one entry. @param deflate  compressed, else stored as it is
[[nodiscard]] std::vector<std::uint8_t> zipFile(const std::string& name, const std::string& content,
                                                bool deflate);

} // namespace camera

#endif
