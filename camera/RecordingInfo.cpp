#include "RecordingInfo.h"

#include <bit>
#include <span>

namespace camera
{
namespace
{

constexpr std::size_t kStopPointersAt = 32;
constexpr std::size_t kDescriptorAt = 96;
constexpr std::uint32_t kStopPointerMask = 0x1FFFFFFF;

std::uint32_t descriptor(const RecordingInfo& info)
{
    std::uint32_t word = ((info.width / 16 - 1) & 0x7FU) << 8;
    word |= ((info.height - 1) & 0x7FFU) << 15;
    if (info.continuous) {
        word |= 0x2U;
    }
    if (info.sequences > 1) {
        const auto code = static_cast<std::uint32_t>(std::countr_zero(info.sequences)) - 1;
        word |= 0x80000000U | (code << 28);
    }
    return word;
}

void putWord(std::span<std::uint8_t> bytes, std::size_t at, std::uint32_t word)
{
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[at + i] = static_cast<std::uint8_t>(word >> (8 * i));
    }
}

} // namespace

std::array<std::uint8_t, kInfoFrameSize> encode(const RecordingInfo& info)
{
    std::array<std::uint8_t, kInfoFrameSize> bytes{};
    for (std::size_t i = 0; i < info.stopPointers.size(); ++i) {
        putWord(bytes, kStopPointersAt + 4 * i, info.stopPointers[i] & kStopPointerMask);
    }
    putWord(bytes, kDescriptorAt, descriptor(info));
    return bytes;
}

} // namespace camera
