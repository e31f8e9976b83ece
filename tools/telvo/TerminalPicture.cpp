#include "TerminalPicture.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace telvo
{

namespace
{

constexpr std::size_t kHeaderSize = 16; // bytes at a frame's beginning that are no pixels
constexpr std::uint32_t kPixelColumns = 8;
constexpr std::uint32_t kPixelRows = 16; // of a character, about

/// A pixel; those of the header are taken from the next line without, if there is one.
std::uint8_t pixelAt(GrayView picture, std::uint32_t x, std::uint32_t y)
{
    const std::size_t headerLines = (kHeaderSize + picture.width - 1) / picture.width;
    const std::size_t place = std::size_t{y} * picture.width + x;
    const std::size_t below = place + headerLines * picture.width;
    return picture.pixels[place < kHeaderSize && below < picture.pixels.size() ? below : place];
}

struct Size {
    std::uint32_t width;
    std::uint32_t height;
};

/// As large as it fits, with its shape kept.
Size fitted(GrayView picture, Size room)
{
    const double scale = std::min(static_cast<double>(room.width) / picture.width,
                                  static_cast<double>(room.height) / picture.height);
    const auto side = [scale](std::uint32_t length) {
        return std::max(1U, static_cast<std::uint32_t>(length * scale));
    };
    return {side(picture.width), side(picture.height)};
}

GrayImage scaled(GrayView picture, Size size)
{
    GrayImage result(size.width, size.height);
    for (std::uint32_t y = 0; y < size.height; ++y) {
        for (std::uint32_t x = 0; x < size.width; ++x) {
            const auto fromX =
                static_cast<std::uint32_t>(std::uint64_t{x} * picture.width / size.width);
            const auto fromY =
                static_cast<std::uint32_t>(std::uint64_t{y} * picture.height / size.height);
            result.pixels[std::size_t{y} * size.width + x] = pixelAt(picture, fromX, fromY);
        }
    }
    return result;
}

std::string greyCode(const char* layer, std::uint8_t grey)
{
    const std::string value = std::to_string(grey);
    return std::string("\x1b[") + layer + ";2;" + value + ';' + value + ';' + value + 'm';
}

/// Each character shows two pixels, one above the other: the upper half block in the colour of the
/// upper on the colour of the lower.
std::string halfBlocks(const GrayImage& image)
{
    std::string text;
    for (std::uint32_t y = 0; y < image.height; y += 2) {
        for (std::uint32_t x = 0; x < image.width; ++x) {
            const std::size_t upper = std::size_t{y} * image.width + x;
            const std::size_t lower = y + 1 < image.height ? upper + image.width : upper;
            text += greyCode("38", image.pixels[upper]) + greyCode("48", image.pixels[lower]) +
                    "\xE2\x96\x80";
        }
        text += "\x1b[0m\x1b[K\r\n";
    }
    return text;
}

std::string base64(const std::vector<std::uint8_t>& bytes)
{
    constexpr std::string_view kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const auto byte = [&](std::size_t at) {
            return at < bytes.size() ? std::uint32_t{bytes[at]} : 0U;
        };
        const std::uint32_t bits = byte(i) << 16U | byte(i + 1) << 8U | byte(i + 2);
        text += kDigits[bits >> 18U];
        text += kDigits[(bits >> 12U) & 63U];
        text += i + 1 < bytes.size() ? kDigits[(bits >> 6U) & 63U] : '=';
        text += i + 2 < bytes.size() ? kDigits[bits & 63U] : '=';
    }
    return text;
}

/// The terminal's graphics command: 24-bit pixels, shown at the cursor in place of the picture
/// before, in pieces as long as it takes them.
std::string kitty(const GrayImage& image)
{
    constexpr std::size_t kPiece = 4096;
    std::vector<std::uint8_t> pixels;
    for (const std::uint8_t grey : image.pixels) {
        pixels.insert(pixels.end(), 3, grey);
    }
    const std::string data = base64(pixels);
    std::string text;
    for (std::size_t at = 0; at < data.size(); at += kPiece) {
        const std::string more = at + kPiece < data.size() ? "1" : "0";
        text += "\x1b_G" +
                (at == 0 ? "a=T,f=24,i=1,p=1,q=2,s=" + std::to_string(image.width) +
                               ",v=" + std::to_string(image.height) + ','
                         : std::string()) +
                "m=" + more + ';' + data.substr(at, kPiece) + "\x1b\\";
    }
    return text + "\r\n";
}

/// Grey values as one of so many colours.
constexpr std::uint32_t kShades = 64;

/// One colour of a band of six lines: a character for each column, runs of the same one shortened.
std::string sixelRow(const std::string& characters)
{
    std::string text;
    for (std::size_t i = 0; i < characters.size();) {
        const std::size_t end = characters.find_first_not_of(characters[i], i);
        const std::size_t run = std::min(end, characters.size()) - i;
        text +=
            run > 3 ? '!' + std::to_string(run) + characters[i] : std::string(run, characters[i]);
        i += run;
    }
    return text;
}

std::string sixelBand(const GrayImage& image, std::uint32_t top)
{
    std::array<std::string, kShades> rows;
    for (std::uint32_t y = top; y < std::min(top + 6, image.height); ++y) {
        for (std::uint32_t x = 0; x < image.width; ++x) {
            std::string& row = rows[image.pixels[std::size_t{y} * image.width + x] * kShades / 256];
            row.resize(image.width, '?'); // "?" is no pixel of the six
            row[x] = static_cast<char>('?' + ((row[x] - '?') | 1 << (y - top)));
        }
    }
    std::string text;
    for (std::uint32_t shade = 0; shade < kShades; ++shade) {
        if (!rows[shade].empty()) {
            text += '#' + std::to_string(shade) + sixelRow(rows[shade]) + '$';
        }
    }
    return text + '-';
}

std::string sixel(const GrayImage& image)
{
    std::string text = "\x1bPq";
    for (std::uint32_t shade = 0; shade < kShades; ++shade) {
        const std::string percent = std::to_string(shade * 100 / (kShades - 1));
        text.append("#").append(std::to_string(shade)).append(";2;");
        text.append(percent).append(";").append(percent).append(";").append(percent);
    }
    for (std::uint32_t top = 0; top < image.height; top += 6) {
        text += sixelBand(image, top);
    }
    return text + "\x1b\\\r\n";
}

} // namespace

TerminalGraphics graphicsOf(const std::string& term, bool hasKittyWindow)
{
    if (hasKittyWindow || term == "xterm-kitty" || term == "xterm-ghostty") {
        return TerminalGraphics::Kitty;
    }
    const bool isSixel = term.find("sixel") != std::string::npos || term.starts_with("mlterm") ||
                         term.starts_with("foot") || term.starts_with("yaft");
    return isSixel ? TerminalGraphics::Sixel : TerminalGraphics::HalfBlocks;
}

std::string pictureText(GrayView picture, TerminalSize room, TerminalGraphics graphics)
{
    if (picture.width == 0 || picture.height == 0) {
        return "";
    }
    if (graphics == TerminalGraphics::HalfBlocks) {
        return halfBlocks(scaled(picture, fitted(picture, {room.columns, 2 * room.rows})));
    }
    const GrayImage image =
        scaled(picture, fitted(picture, {kPixelColumns * room.columns, kPixelRows * room.rows}));
    return graphics == TerminalGraphics::Kitty ? kitty(image) : sixel(image);
}

std::string histogramText(GrayView picture, std::uint32_t columns)
{
    constexpr std::array<const char*, 9> kBars{" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
    std::vector<std::size_t> counts(std::clamp(columns, 1U, 256U));
    for (std::size_t i = std::min(kHeaderSize, picture.pixels.size()); i < picture.pixels.size();
         ++i) {
        ++counts[picture.pixels[i] * counts.size() / 256];
    }
    const std::size_t most = std::max<std::size_t>(1, *std::ranges::max_element(counts));
    std::string text;
    for (const std::size_t count : counts) {
        // Rounded up: what is there at all is seen.
        text += kBars[(count * (kBars.size() - 1) + most - 1) / most];
    }
    return text;
}

} // namespace telvo
