#include "Scene.h"

#include "SceneObjects.h"

#include <optional>

namespace camera
{
namespace
{

// All that is the same for every pixel of one frame.
struct Frame {
    Frame(const SceneView& sceneView, std::uint32_t frameSequence, std::uint32_t frameNumber)
        : view(sceneView),
          sequence(frameSequence),
          number(frameNumber),
          ball(ballPosition(view, sequence, number)),
          dart(dartPosition(view, sequence, number)),
          text(sceneText(sequence, number))
    {
    }
    const SceneView& view;
    std::uint32_t sequence;
    std::uint32_t number;
    ScenePoint ball;
    ScenePoint dart;
    SceneText text;
};

std::optional<std::uint8_t> textPixel(const Frame& frame, std::uint32_t x, std::uint32_t y)
{
    // Unsigned: what lies left of or above the text is far beyond it.
    const std::uint32_t column = x - kTextLeft;
    const std::uint32_t row = y - kTextTop;
    if (row >= kGlyphSize || column >= kTextLength * kGlyphSize) {
        return std::nullopt;
    }
    return glyphShade(frame.text[column / kGlyphSize], column % kGlyphSize, row);
}

std::optional<std::uint8_t> objectPixel(const Frame& frame, std::uint32_t sensorX,
                                        std::uint32_t sensorY)
{
    if (sensorX - frame.dart.x < kDartLength && sensorY - frame.dart.y < kDartHeight) {
        return kDartShade;
    }
    const std::uint32_t ballX = sensorX - frame.ball.x;
    const std::uint32_t ballY = sensorY - frame.ball.y;
    if (ballX >= 2 * kBallRadius || ballY >= 2 * kBallRadius) {
        return std::nullopt;
    }
    const std::uint8_t shade = ballShade(ballX, ballY);
    return shade == 0 ? std::nullopt : std::optional{shade};
}

std::uint8_t pixel(const Frame& frame, std::uint32_t x, std::uint32_t y)
{
    const SceneView& view = frame.view;
    if (x + kMarkColumns >= view.width) {
        return markShade(frame.sequence, frame.number, y);
    }
    if (const auto shade = textPixel(frame, x, y)) {
        return *shade;
    }
    const auto object = objectPixel(frame, (view.offsetX + x) * view.decimation,
                                    (view.offsetY + y) * view.decimation);
    return object ? *object : backgroundShade(view, frame.sequence, x, y);
}

} // namespace

std::uint8_t scenePixel(const SceneView& view, std::uint32_t sequence, std::uint32_t number,
                        std::uint32_t x, std::uint32_t y)
{
    return pixel(Frame(view, sequence, number), x, y);
}

void renderScene(const SceneView& view, std::uint32_t sequence, std::uint32_t number,
                 std::span<std::uint8_t> image)
{
    const Frame frame(view, sequence, number);
    std::size_t at = 0;
    for (std::uint32_t y = 0; y < view.height; ++y) {
        for (std::uint32_t x = 0; x < view.width; ++x) {
            image[at] = pixel(frame, x, y);
            ++at;
        }
    }
}

} // namespace camera
