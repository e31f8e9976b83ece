#ifndef TELVO_CAMERA_FRAMERENDERER_H
#define TELVO_CAMERA_FRAMERENDERER_H

#include "FrameStamp.h"
#include "Scene.h"

#include <array>
#include <vector>

namespace camera
{

/// Frames of one view, drawn fast: the background is kept, and from frame to frame only the moving
/// objects, the text, the marks and the header are drawn anew. Equals renderFrame() byte for byte.
/// Not thread-safe.
class FrameRenderer
{
  public:
    explicit FrameRenderer(const SceneView& view);

    [[nodiscard]] const SceneView& view() const { return mView; }

    /// One whole frame, header first. Valid until the next call.
    std::span<const std::uint8_t> render(const FrameStamp& stamp);

  private:
    struct Area { // in image pixels, clipped to the image
        std::uint32_t left = 0;
        std::uint32_t top = 0;
        std::uint32_t right = 0;
        std::uint32_t bottom = 0;
    };

    void useSequence(std::uint32_t sequence);
    [[nodiscard]] Area areaOf(std::uint32_t sensorX, std::uint32_t sensorY,
                              std::uint32_t sensorWidth, std::uint32_t sensorHeight) const;
    void restore(const Area& area);
    void drawBall(const FrameStamp& stamp);
    void drawDart(const FrameStamp& stamp);
    void drawText(const FrameStamp& stamp);
    void drawMarks(const FrameStamp& stamp);
    [[nodiscard]] std::uint8_t* row(std::uint32_t y)
    {
        return &mImage[std::size_t{y} * mView.width];
    }

    SceneView mView;
    std::uint32_t mSequence;
    std::vector<std::uint8_t> mBackground;
    std::vector<std::uint8_t> mImage;
    Area mBallArea;
    Area mDartArea;
};

/// One whole frame from nothing: the scene with the header over its first 16 bytes.
[[nodiscard]] std::vector<std::uint8_t> renderFrame(const SceneView& view, const FrameStamp& stamp);

} // namespace camera

#endif
