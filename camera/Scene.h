#ifndef TELVO_CAMERA_SCENE_H
#define TELVO_CAMERA_SCENE_H

#include <cstdint>
#include <span>

namespace camera
{

/// Columns at the right edge that change with every frame and every line, so a torn frame shows.
inline constexpr std::uint32_t kMarkColumns = 8;

/// A rectangle, in image pixels.
struct SceneWindow {
    std::uint32_t left = 0;
    std::uint32_t top = 0;
    std::uint32_t width = 0; ///< 0: no window
    std::uint32_t height = 0;
    bool operator==(const SceneWindow&) const = default;
};

/// The part of the sensor that one image shows. Offsets count pixels of the (decimated) image.
struct SceneView {
    std::uint32_t width = 1280;
    std::uint32_t height = 1024;
    std::uint32_t offsetX = 0;
    std::uint32_t offsetY = 0;
    std::uint32_t decimation = 1; ///< 2: every second pixel of every second line
    std::uint32_t sensorWidth = 1280;
    std::uint32_t sensorHeight = 1024;
    SceneWindow window{}; ///< its outline is drawn in the background
    bool colour = false;  ///< true: pixels behind a Bayer RG filter
    bool operator==(const SceneView&) const = default;
};

/// Grey value of one pixel: a function of its arguments alone, so that whoever knows a frame's
/// sequence and number can verify every byte of it. In front lie the marks at the right edge, then
/// the text (sequence, frame number, scene time: one millisecond a frame), the dart and the ball;
/// behind them a zone plate with a grid. The frame header is not part of the scene.
/// @param x, y  position in the image, from the top left corner
[[nodiscard]] std::uint8_t scenePixel(const SceneView& view, std::uint32_t sequence,
                                      std::uint32_t number, std::uint32_t x, std::uint32_t y);

/// Fills image (width * height bytes, row by row) with scenePixel() of every position.
void renderScene(const SceneView& view, std::uint32_t sequence, std::uint32_t number,
                 std::span<std::uint8_t> image);

} // namespace camera

#endif
