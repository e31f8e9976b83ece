#ifndef TELVO_GIGE_GENAPI_DESCRIPTIONURL_H
#define TELVO_GIGE_GENAPI_DESCRIPTIONURL_H

#include "GenApiStatus.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace gige::genapi
{

/// Where in the device's memory its description lies.
struct DescriptionLocation {
    std::string fileName;      ///< as the device calls it; tells nothing about the content
    std::uint64_t address = 0; ///< of the first byte
    std::size_t length = 0;    ///< bytes, 1..kDescriptionSizeLimit

    bool operator==(const DescriptionLocation&) const = default;
};

/// Reads the text of a URL register (First URL 0x0200, Second URL 0x0400), such as
/// `Local:camera.zip;8001A000;53A5?SchemaVersion=1.1.0`: address and length are hexadecimal.
/// Scheme and digits in any case, `///` after the colon, blanks, `0x` and a query are all accepted;
/// the text ends at the first NUL.
///
/// @return UrlUnsupported for `File:` and `http:`: a device does not make the host read its own
/// files or ask other machines; UrlMalformed, also for no text; DescriptionTooLarge
Result<DescriptionLocation> parseDescriptionUrl(std::string_view url);

} // namespace gige::genapi

#endif
