#include "FrameHeader.h"

namespace
{

std::uint64_t littleEndian(std::span<const std::uint8_t> bytes)
{
    std::uint64_t value = 0;
    for (std::size_t i = bytes.size(); i > 0; --i) {
        value = value << 8 | bytes[i - 1];
    }
    return value;
}

} // namespace

std::optional<FrameHeader> decodeFrameHeader(std::span<const std::uint8_t> frame)
{
    if (frame.size() < kFrameHeaderSize) {
        return std::nullopt;
    }
    return FrameHeader{.counter = static_cast<std::uint16_t>(littleEndian(frame.subspan(4, 2))),
                       .flags = static_cast<std::uint8_t>(~frame[7]),
                       .value = littleEndian(frame.subspan(8, 7)),
                       .extra = frame[15]};
}

std::optional<HeadedFrame> headedFrame(std::span<const std::uint8_t> frame)
{
    const auto header = decodeFrameHeader(frame);
    return header ? std::optional(HeadedFrame{.data = frame.data(), .header = *header})
                  : std::nullopt;
}
