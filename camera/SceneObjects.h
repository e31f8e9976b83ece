#ifndef TELVO_CAMERA_SCENEOBJECTS_H
#define TELVO_CAMERA_SCENEOBJECTS_H

#include "Scene.h"

#include <array>

// What the scene is made of. Scene.cpp asks for single pixels, FrameRenderer.cpp draws whole
// objects; both take positions and shades from here.
namespace camera
{

inline constexpr std::uint32_t kBallRadius = 40; // sensor pixels
inline constexpr std::uint32_t kDartLength = 64; // sensor pixels
inline constexpr std::uint32_t kDartHeight = 8;  // sensor pixels
inline constexpr std::uint8_t kDartShade = 250;

inline constexpr std::uint32_t kTextLeft = 16;  // image pixels
inline constexpr std::uint32_t kTextTop = 16;   // image pixels
inline constexpr std::uint32_t kGlyphSize = 16; // image pixels, square
inline constexpr std::uint32_t kTextLength = 25;

struct ScenePoint {
    std::uint32_t x = 0;
    std::uint32_t y = 0;
};

using SceneText = std::array<char, kTextLength>;

/// Top left corner of the ball's square, on the sensor; both coordinates are even.
[[nodiscard]] ScenePoint ballPosition(const SceneView& view, std::uint32_t sequence,
                                      std::uint32_t number);

/// Shade of the ball at a position inside its square of 2 * kBallRadius; 0 outside the disc.
[[nodiscard]] std::uint8_t ballShade(std::uint32_t x, std::uint32_t y);

/// Top left corner of the dart, on the sensor; both coordinates are even.
[[nodiscard]] ScenePoint dartPosition(const SceneView& view, std::uint32_t sequence,
                                      std::uint32_t number);

/// "S03 F0000012345 0012.345s": sequence, frame number, scene time.
[[nodiscard]] SceneText sceneText(std::uint32_t sequence, std::uint32_t number);

/// Shade of a character's cell at a position inside its kGlyphSize square.
[[nodiscard]] std::uint8_t glyphShade(char character, std::uint32_t x, std::uint32_t y);

/// Shade of the marks at the right edge in line y.
[[nodiscard]] std::uint8_t markShade(std::uint32_t sequence, std::uint32_t number, std::uint32_t y);

/// Shade of the picture behind all objects at an image position.
[[nodiscard]] std::uint8_t backgroundShade(const SceneView& view, std::uint32_t sequence,
                                           std::uint32_t x, std::uint32_t y);

} // namespace camera

#endif
