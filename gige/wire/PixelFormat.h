#ifndef TELVO_GIGE_WIRE_PIXELFORMAT_H
#define TELVO_GIGE_WIRE_PIXELFORMAT_H

#include <cstdint>
#include <string_view>

namespace gige::wire
{

// Pixel formats (PFNC codes) that come up by name in code; pixelFormatName() knows the others.
constexpr std::uint32_t kPixelMono8 = 0x01080001;
constexpr std::uint32_t kPixelMono10 = 0x01100003;
constexpr std::uint32_t kPixelMono12 = 0x01100005;
constexpr std::uint32_t kPixelMono16 = 0x01100007;
constexpr std::uint32_t kPixelBayerGR8 = 0x01080008;
constexpr std::uint32_t kPixelBayerRG8 = 0x01080009;
constexpr std::uint32_t kPixelBayerGB8 = 0x0108000A;
constexpr std::uint32_t kPixelBayerBG8 = 0x0108000B;
constexpr std::uint32_t kPixelRgb8 = 0x02180014;
constexpr std::uint32_t kPixelBgr8 = 0x02180015;

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

/// "Mono8"; empty for a code without a name.
std::string_view pixelFormatName(std::uint32_t pixelFormat);

/// Code of a name such as "BayerRG12p"; 0 for an unknown one.
std::uint32_t pixelFormatCode(std::string_view name);

} // namespace gige::wire

#endif
