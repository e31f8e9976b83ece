#ifndef TELVO_GIGE_WIRE_PIXELFORMAT_H
#define TELVO_GIGE_WIRE_PIXELFORMAT_H

#include <cstdint>

namespace gige::wire
{

// Pixel formats (PFNC codes) that come up by name in code.
constexpr std::uint32_t kPixelMono8 = 0x01080001;
constexpr std::uint32_t kPixelBayerRG8 = 0x01080009;

/// Bits that one pixel takes in memory: 0x00FF0000 of the code.
constexpr std::uint32_t bitsPerPixel(std::uint32_t pixelFormat)
{
    return (pixelFormat >> 16) & 0xFF;
}

/// Bytes of one line, filled up to a whole byte. @param width  pixels
constexpr std::uint64_t lineBytes(std::uint32_t pixelFormat, std::uint32_t width)
{
    return (std::uint64_t{width} * bitsPerPixel(pixelFormat) + 7) / 8;
}

} // namespace gige::wire

#endif
