#include "Windows1252.h"

#include <array>

namespace telvo
{

namespace
{

constexpr char16_t kReplacement = 0xFFFD;

// Bytes 80 to 9F: the only ones where Windows-1252 is not Latin-1.
constexpr std::array<char16_t, 32> kHighControls{
    0x20AC,       kReplacement, 0x201A, 0x0192, 0x201E, 0x2026,       0x2020, 0x2021,
    0x02C6,       0x2030,       0x0160, 0x2039, 0x0152, kReplacement, 0x017D, kReplacement,
    kReplacement, 0x2018,       0x2019, 0x201C, 0x201D, 0x2022,       0x2013, 0x2014,
    0x02DC,       0x2122,       0x0161, 0x203A, 0x0153, kReplacement, 0x017E, 0x0178};

char16_t codePoint(unsigned char byte)
{
    return byte >= 0x80 && byte <= 0x9F ? kHighControls[byte - 0x80U] : char16_t{byte};
}

void appendUtf8(std::string& text, char16_t point)
{
    if (point < 0x80) {
        text += static_cast<char>(point);
    } else if (point < 0x800) {
        text += static_cast<char>(0xC0 | (point >> 6));
        text += static_cast<char>(0x80 | (point & 0x3F));
    } else {
        text += static_cast<char>(0xE0 | (point >> 12));
        text += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (point & 0x3F));
    }
}

} // namespace

std::string utf8FromWindows1252(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (const char character : text) {
        appendUtf8(result, codePoint(static_cast<unsigned char>(character)));
    }
    return result;
}

} // namespace telvo
