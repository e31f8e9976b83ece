#include "InfoFrame.h"

#include <algorithm>

namespace
{

constexpr std::size_t kStopPointersOffset = 32;
constexpr std::size_t kDescriptorOffset = 96;
constexpr std::uint32_t kStopPointerMask = 0x1FFFFFFF;

std::uint32_t word(std::span<const std::uint8_t> frame, std::size_t offset)
{
    return std::uint32_t{frame[offset]} | std::uint32_t{frame[offset + 1]} << 8 |
           std::uint32_t{frame[offset + 2]} << 16 | std::uint32_t{frame[offset + 3]} << 24;
}

constexpr std::uint32_t bits(std::uint32_t value, unsigned first, unsigned count)
{
    return value >> first & ((1U << count) - 1);
}

std::uint32_t sequences(std::uint32_t descriptor)
{
    const bool multiSequence = bits(descriptor, 1, 1) != 0 && bits(descriptor, 31, 1) != 0;
    const std::uint32_t code = bits(descriptor, 28, 3);
    return multiSequence && code <= 3 ? 2U << code : 1;
}

} // namespace

std::optional<InfoFrame> decodeInfoFrame(std::span<const std::uint8_t> frame)
{
    if (frame.size() < kInfoFrameSize) {
        return std::nullopt;
    }
    const std::uint32_t descriptor = word(frame, kDescriptorOffset);
    InfoFrame info{.width = (bits(descriptor, 8, 7) + 1) * 16,
                   .height = bits(descriptor, 15, 11) + 1,
                   .recordMode = bits(descriptor, 1, 1),
                   .sequences = sequences(descriptor),
                   .stopPointers = {}};
    for (std::size_t i = 0; i < kMaxSequences; ++i) {
        info.stopPointers[i] = word(frame, kStopPointersOffset + i * 4) & kStopPointerMask;
    }
    return info;
}

std::uint32_t plausibleSequences(const InfoFrame& info)
{
    const bool unusedAreZero = std::all_of(info.stopPointers.begin() + info.sequences,
                                           info.stopPointers.end(), [](auto p) { return p == 0; });
    return unusedAreZero ? info.sequences : 0;
}
