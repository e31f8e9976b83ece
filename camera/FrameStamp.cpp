#include "FrameStamp.h"

namespace camera
{
namespace
{

void putLittleEndian(std::span<std::uint8_t> bytes, std::uint64_t value)
{
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(value);
        value >>= 8;
    }
}

} // namespace

std::array<std::uint8_t, kFrameHeaderSize> encode(const FrameStamp& stamp)
{
    std::array<std::uint8_t, kFrameHeaderSize> header{};
    const std::span bytes(header);
    putLittleEndian(bytes.subspan(0, 4), stamp.number);
    putLittleEndian(bytes.subspan(4, 2), stamp.number);
    header[6] = static_cast<std::uint8_t>(stamp.sequence);
    header[7] = stamp.flags;
    putLittleEndian(bytes.subspan(8, 7), stamp.time);
    header[15] = stamp.last ? 1 : 0;
    return header;
}

std::uint64_t irigTime(std::chrono::sys_time<std::chrono::microseconds> time)
{
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const auto newYear = std::chrono::sys_days{date.year() / std::chrono::January / 1};
    const std::chrono::hh_mm_ss clock(time - day);
    const auto bits = [](auto value, unsigned shift) {
        return static_cast<std::uint64_t>(value) << shift;
    };
    return bits(clock.subseconds().count(), 0) | bits(clock.seconds().count(), 20) |
           bits(clock.minutes().count(), 26) | bits(clock.hours().count(), 32) |
           bits((day - newYear).count() + 1, 37);
}

} // namespace camera
