#include "SceneObjects.h"

#include <algorithm>
#include <string_view>

namespace camera
{
namespace
{

constexpr std::uint32_t kFontRows = 7;
constexpr std::uint32_t kFontScale = 2;
constexpr std::uint8_t kInk = 255;
constexpr std::uint8_t kPaper = 8;

struct Glyph {
    char character;
    std::array<std::uint8_t, kFontRows> rows; // 5 bits each, most significant is leftmost
};

constexpr std::array kFont{
    Glyph{'0', {0x0E, 0x11, 0x13, 0x15, 0x19, 0x11, 0x0E}},
    Glyph{'1', {0x04, 0x0C, 0x04, 0x04, 0x04, 0x04, 0x0E}},
    Glyph{'2', {0x0E, 0x11, 0x01, 0x06, 0x08, 0x10, 0x1F}},
    Glyph{'3', {0x1F, 0x02, 0x04, 0x02, 0x01, 0x11, 0x0E}},
    Glyph{'4', {0x02, 0x06, 0x0A, 0x12, 0x1F, 0x02, 0x02}},
    Glyph{'5', {0x1F, 0x10, 0x1E, 0x01, 0x01, 0x11, 0x0E}},
    Glyph{'6', {0x06, 0x08, 0x10, 0x1E, 0x11, 0x11, 0x0E}},
    Glyph{'7', {0x1F, 0x01, 0x02, 0x04, 0x08, 0x08, 0x08}},
    Glyph{'8', {0x0E, 0x11, 0x11, 0x0E, 0x11, 0x11, 0x0E}},
    Glyph{'9', {0x0E, 0x11, 0x11, 0x0F, 0x01, 0x02, 0x0C}},
    Glyph{'S', {0x0F, 0x10, 0x10, 0x0E, 0x01, 0x01, 0x1E}},
    Glyph{'F', {0x1F, 0x10, 0x10, 0x1E, 0x10, 0x10, 0x10}},
    Glyph{'s', {0x00, 0x00, 0x0F, 0x10, 0x0E, 0x01, 0x1E}},
    Glyph{'.', {0x00, 0x00, 0x00, 0x00, 0x00, 0x0C, 0x0C}},
};

// A point that runs to and fro between 0 and limit.
std::uint32_t bounce(std::uint64_t travelled, std::uint32_t limit)
{
    if (limit == 0) {
        return 0;
    }
    const std::uint64_t phase = travelled % (std::uint64_t{2} * limit);
    const std::uint64_t place = phase <= limit ? phase : std::uint64_t{2} * limit - phase;
    return static_cast<std::uint32_t>(place);
}

std::uint32_t room(std::uint32_t space, std::uint32_t object)
{
    return space > object ? space - object : 0;
}

// Even, so that an object looks the same in every decimated picture.
std::uint32_t even(std::uint32_t value)
{
    return value & ~1U;
}

void putNumber(SceneText& text, std::size_t first, std::size_t digits, std::uint32_t value)
{
    for (std::size_t i = digits; i > 0; --i) {
        text[first + i - 1] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
}

// Red lets through what is left, blue what is right: enough to tell the colours apart.
std::uint32_t bayerTint(std::uint32_t shade, std::uint32_t sensorX, std::uint32_t sensorY,
                        std::uint32_t sensorWidth)
{
    const bool oddX = (sensorX & 1U) != 0;
    const bool oddY = (sensorY & 1U) != 0;
    if (oddX != oddY) {
        return shade;
    }
    const std::uint32_t right = sensorX * 128 / std::max(sensorWidth, 1U);
    return shade * (oddX ? 64 + right : 192 - right) / 192;
}

bool isOnOutline(const SceneWindow& window, std::uint32_t x, std::uint32_t y)
{
    // Unsigned: what lies left of or above the window is far beyond it.
    const std::uint32_t column = x - window.left;
    const std::uint32_t row = y - window.top;
    const bool inside = column < window.width && row < window.height;
    return inside &&
           (column == 0 || row == 0 || column + 1 == window.width || row + 1 == window.height);
}

} // namespace

ScenePoint ballPosition(const SceneView& view, std::uint32_t sequence, std::uint32_t number)
{
    const std::uint64_t step = number;
    return {.x = even(bounce(step * 14 + sequence * 102U, room(view.sensorWidth, 2 * kBallRadius))),
            .y = even(bounce(step * 6 + sequence * 58U, room(view.sensorHeight, 2 * kBallRadius)))};
}

std::uint8_t ballShade(std::uint32_t x, std::uint32_t y)
{
    const auto distance = [](std::uint32_t value, std::uint32_t centre) {
        const std::uint32_t away = value > centre ? value - centre : centre - value;
        return away * away;
    };
    const std::uint32_t square = kBallRadius * kBallRadius;
    if (distance(x, kBallRadius) + distance(y, kBallRadius) >= square) {
        return 0;
    }
    // The light falls from the upper left.
    const std::uint32_t shade =
        (distance(x, kBallRadius / 2) + distance(y, kBallRadius / 2)) * 180 / (square * 3);
    return static_cast<std::uint8_t>(240 - std::min(shade, 200U));
}

ScenePoint dartPosition(const SceneView& view, std::uint32_t sequence, std::uint32_t number)
{
    const std::uint32_t span = room(view.sensorWidth, kDartLength) + 1;
    const std::uint64_t travelled = std::uint64_t{number} * 38 + sequence * 214U;
    return {.x = even(static_cast<std::uint32_t>(travelled % span)),
            .y = even(view.sensorHeight * 3 / 4)};
}

SceneText sceneText(std::uint32_t sequence, std::uint32_t number)
{
    constexpr std::string_view kPattern = "S00 F0000000000 0000.000s";
    static_assert(kPattern.size() == kTextLength);
    SceneText text{};
    std::ranges::copy(kPattern, text.begin());
    putNumber(text, 1, 2, sequence);
    putNumber(text, 5, 10, number);
    putNumber(text, 16, 4, number / 1000);
    putNumber(text, 21, 3, number);
    return text;
}

std::uint8_t glyphShade(char character, std::uint32_t x, std::uint32_t y)
{
    constexpr std::uint32_t kColumns = 5;
    const std::uint32_t column = x / kFontScale;
    const std::uint32_t row = y / kFontScale;
    const auto* const glyph = std::ranges::find(kFont, character, &Glyph::character);
    if (glyph == kFont.end() || column >= kColumns || row >= kFontRows) {
        return kPaper;
    }
    const std::uint32_t dots = glyph->rows[row];
    return ((dots >> (kColumns - 1 - column)) & 1U) != 0 ? kInk : kPaper;
}

std::uint8_t markShade(std::uint32_t sequence, std::uint32_t number, std::uint32_t y)
{
    return static_cast<std::uint8_t>(number * 5 + sequence * 17 + y * 3);
}

std::uint8_t backgroundShade(const SceneView& view, std::uint32_t sequence, std::uint32_t x,
                             std::uint32_t y)
{
    constexpr std::uint32_t kGrid = 64;
    if (isOnOutline(view.window, x, y)) {
        return kInk;
    }
    const std::uint32_t sensorX = (view.offsetX + x) * view.decimation;
    const std::uint32_t sensorY = (view.offsetY + y) * view.decimation;
    const std::uint32_t dx = sensorX - view.sensorWidth / 2;
    const std::uint32_t dy = sensorY - view.sensorHeight / 2;
    const std::uint32_t ring = ((dx * dx + dy * dy) >> 9) & 63U;
    const std::uint32_t ramp = sensorX * 90 / std::max(view.sensorWidth, 1U);
    const bool onGrid = sensorX % kGrid < 2 || sensorY % kGrid < 2;
    const std::uint32_t shade = onGrid ? 180 : 30 + ramp + (ring < 32 ? ring : 63 - ring);
    const std::uint32_t stepped = shade + (sequence % 16) * 2;
    return static_cast<std::uint8_t>(
        view.colour ? bayerTint(stepped, sensorX, sensorY, view.sensorWidth) : stepped);
}

} // namespace camera
