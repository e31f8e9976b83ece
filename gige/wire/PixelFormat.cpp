#include "PixelFormat.h"

#include <algorithm>
#include <array>

namespace gige::wire
{

namespace
{

struct NamedFormat {
    std::uint32_t code;
    std::string_view name;
};

constexpr auto kFormats = std::to_array<NamedFormat>({
    {0x01010037, "Mono1p"},          {0x01100025, "Mono14"},
    {0x01080001, "Mono8"},           {0x01100007, "Mono16"},
    {0x01080002, "Mono8s"},          {0x01100003, "Mono10"},
    {0x010C0004, "Mono10Packed"},    {0x010A0046, "Mono10p"},
    {0x01100005, "Mono12"},          {0x010C0006, "Mono12Packed"},
    {0x010C0047, "Mono12p"},         {0x02100035, "RGB565p"},
    {0x02100036, "BGR565p"},         {0x02180014, "RGB8"},
    {0x02180021, "RGB8_Planar"},     {0x02180015, "BGR8"},
    {0x020C001E, "YUV411_8_UYYVYY"}, {0x02200016, "RGBa8"},
    {0x0210001F, "YUV422_8_UYVY"},   {0x02200017, "BGRa8"},
    {0x02100032, "YUV422_8"},        {0x02300018, "RGB10"},
    {0x02180020, "YUV8_UYV"},        {0x0230001A, "RGB12"},
    {0x0210003B, "YCbCr422_8"},      {0x02300033, "RGB16"},
    {0x02300019, "BGR10"},           {0x01080008, "BayerGR8"},
    {0x01080009, "BayerRG8"},        {0x0108000A, "BayerGB8"},
    {0x0108000B, "BayerBG8"},        {0x0110000C, "BayerGR10"},
    {0x0110000D, "BayerRG10"},       {0x0110000E, "BayerGB10"},
    {0x0110000F, "BayerBG10"},       {0x01100010, "BayerGR12"},
    {0x01100011, "BayerRG12"},       {0x01100012, "BayerGB12"},
    {0x01100013, "BayerBG12"},       {0x0110002E, "BayerGR16"},
    {0x0110002F, "BayerRG16"},       {0x01100030, "BayerGB16"},
    {0x01100031, "BayerBG16"},       {0x010C0026, "BayerGR10Packed"},
    {0x010C0027, "BayerRG10Packed"}, {0x010C0028, "BayerGB10Packed"},
    {0x010C0029, "BayerBG10Packed"}, {0x010C002A, "BayerGR12Packed"},
    {0x010C002B, "BayerRG12Packed"}, {0x010C002C, "BayerGB12Packed"},
    {0x010C002D, "BayerBG12Packed"}, {0x010A0056, "BayerGR10p"},
    {0x010A0058, "BayerRG10p"},      {0x010A0054, "BayerGB10p"},
    {0x010A0052, "BayerBG10p"},      {0x010C0057, "BayerGR12p"},
    {0x010C0059, "BayerRG12p"},      {0x010C0055, "BayerGB12p"},
    {0x010C0053, "BayerBG12p"},
});

} // namespace

std::string_view pixelFormatName(std::uint32_t pixelFormat)
{
    const auto found = std::ranges::find(kFormats, pixelFormat, &NamedFormat::code);
    return found == kFormats.end() ? std::string_view() : found->name;
}

std::uint32_t pixelFormatCode(std::string_view name)
{
    const auto found = std::ranges::find(kFormats, name, &NamedFormat::name);
    return found == kFormats.end() ? 0 : found->code;
}

} // namespace gige::wire
