#include "DescriptionFile.h"

#include "GenApiLimits.h"
#include "ZipArchive.h"

#include <algorithm>
#include <array>

namespace gige::genapi
{

namespace
{

constexpr std::array<std::uint8_t, 4> kZipStart{'P', 'K', 3, 4}; // local file header signature

} // namespace

Result<std::string> unpackDescription(std::span<const std::uint8_t> file)
{
    if (file.size() > kDescriptionSizeLimit) {
        return Status::DescriptionTooLarge;
    }
    const bool isZip = file.size() >= kZipStart.size() &&
                       std::ranges::equal(file.first(kZipStart.size()), kZipStart);
    if (!isZip) {
        return std::string(file.begin(), file.end());
    }
    ZipArchive archive(file);
    if (const Status status = archive.selectDescription(); status != Status::Ok) {
        return status;
    }
    return archive.read(kDescriptionSizeLimit);
}

} // namespace gige::genapi
