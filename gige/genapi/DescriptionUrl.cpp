#include "DescriptionUrl.h"

#include "GenApiLimits.h"
#include "TextNumbers.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace gige::genapi
{

namespace
{

constexpr std::string_view kSlashes = "///";

std::string lowered(std::string_view text)
{
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](unsigned char letter) {
        return static_cast<char>(std::tolower(letter));
    });
    return result;
}

/// Cuts off and returns what stands before the separator; all of it if there is none.
std::string_view takeUntil(std::string_view& rest, char separator)
{
    const std::size_t end = std::min(rest.find(separator), rest.size());
    const std::string_view taken = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return trimmed(taken);
}

Result<DescriptionLocation> parseLocal(std::string_view rest)
{
    if (rest.starts_with(kSlashes)) { // "Local:///camera.zip;…", as of a URL with an empty host
        rest.remove_prefix(kSlashes.size());
    }
    const std::string_view fileName = takeUntil(rest, ';');
    const std::optional<std::uint64_t> address = parseHexadecimal(takeUntil(rest, ';'));
    // Behind a question mark stands the schema version, which the file itself tells, too.
    const std::optional<std::uint64_t> length = parseHexadecimal(takeUntil(rest, '?'));
    if (!address || !length || *length == 0) {
        return Status::UrlMalformed;
    }
    if (*length > kDescriptionSizeLimit) {
        return Status::DescriptionTooLarge;
    }
    return DescriptionLocation{std::string(fileName), *address, static_cast<std::size_t>(*length)};
}

} // namespace

Result<DescriptionLocation> parseDescriptionUrl(std::string_view url)
{
    // The URL registers have 512 bytes, filled up with NULs.
    url = trimmed(url.substr(0, url.find('\0')));
    if (url.find(':') == std::string_view::npos) {
        return Status::UrlMalformed;
    }
    std::string_view rest = url;
    const std::string scheme = lowered(takeUntil(rest, ':'));
    if (scheme == "local") {
        return parseLocal(trimmed(rest));
    }
    // Understood, and refused: see the header.
    const bool isKnown = scheme == "file" || scheme == "http" || scheme == "https";
    return isKnown ? Status::UrlUnsupported : Status::UrlMalformed;
}

} // namespace gige::genapi
