#include "DeviceDescription.h"

#include "BootstrapRegisters.h"
#include "DescriptionFile.h"
#include "DescriptionUrl.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

using gige::control::DeviceRegisters;
using gige::genapi::DescriptionLocation;

namespace
{

std::optional<std::vector<std::uint8_t>> readFile(DeviceRegisters& registers,
                                                  const DescriptionLocation& location,
                                                  DeviceRegisters::TimePoint deadline)
{
    // Devices serve whole 32-bit words at word boundaries.
    constexpr std::uint64_t kWord = 4;
    const std::uint64_t start = location.address / kWord * kWord;
    const std::uint64_t end = (location.address + location.length + kWord - 1) / kWord * kWord;
    if (end > std::uint64_t{std::numeric_limits<std::uint32_t>::max()} + 1) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> words(end - start);
    if (registers.readMemory(static_cast<std::uint32_t>(start), words, deadline) !=
        gige::control::Status::Ok) {
        return std::nullopt;
    }
    const auto first = words.begin() + static_cast<std::ptrdiff_t>(location.address - start);
    return std::vector(first, first + static_cast<std::ptrdiff_t>(location.length));
}

bool tryUrl(DeviceRegisters& registers, std::uint32_t urlRegister,
            const std::function<bool(const std::string& xml)>& use,
            DeviceRegisters::TimePoint deadline)
{
    const auto url = registers.readString(urlRegister, gige::wire::kUrlLength);
    if (!url) {
        return false;
    }
    const auto location = gige::genapi::parseDescriptionUrl(*url);
    if (!location) {
        return false;
    }
    const auto file = readFile(registers, *location, deadline);
    if (!file) {
        return false;
    }
    const auto xml = gige::genapi::unpackDescription(*file);
    return xml && use(*xml);
}

} // namespace

bool readDescription(DeviceRegisters& registers,
                     const std::function<bool(const std::string& xml)>& use,
                     std::chrono::milliseconds time)
{
    const auto deadline = gige::control::systemClock().now() + time;
    return tryUrl(registers, gige::wire::kRegFirstUrl, use, deadline) ||
           tryUrl(registers, gige::wire::kRegSecondUrl, use, deadline);
}
