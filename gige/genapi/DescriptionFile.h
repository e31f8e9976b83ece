#ifndef TELVO_GIGE_GENAPI_DESCRIPTIONFILE_H
#define TELVO_GIGE_GENAPI_DESCRIPTIONFILE_H

#include "GenApiStatus.h"

#include <cstdint>
#include <span>
#include <string>

namespace gige::genapi
{

/// The XML text of a description file as read from a device. Whether the file is a ZIP archive
/// shows in its first bytes, whatever its name says. Of several files in an archive, the first
/// whose name ends in `.xml` counts; a single file counts under any name.
///
/// @return ZipMalformed; DescriptionTooLarge beyond kDescriptionSizeLimit, zipped or unzipped: no
/// more than that is ever unpacked
Result<std::string> unpackDescription(std::span<const std::uint8_t> file);

} // namespace gige::genapi

#endif
