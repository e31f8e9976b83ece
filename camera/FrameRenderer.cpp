#include "FrameRenderer.h"

#include "SceneObjects.h"

#include <algorithm>
#include <cstring>

namespace camera
{
namespace
{

constexpr std::uint32_t kBallSize = 2 * kBallRadius;
constexpr std::uint32_t kNoSequence = 0xFFFFFFFF;

using GlyphRow = std::array<std::uint8_t, kGlyphSize>;
using GlyphCell = std::array<GlyphRow, kGlyphSize>;

// The pixel function looks glyphs and shades up one by one: too slow at thousands of frames a
// second, so both are drawn once.
const std::array<GlyphCell, 128>& glyphCells()
{
    static const std::array<GlyphCell, 128> kCells = [] {
        std::array<GlyphCell, 128> cells{};
        for (std::size_t character = 0; character < cells.size(); ++character) {
            for (std::uint32_t y = 0; y < kGlyphSize; ++y) {
                for (std::uint32_t x = 0; x < kGlyphSize; ++x) {
                    cells[character][y][x] = glyphShade(static_cast<char>(character), x, y);
                }
            }
        }
        return cells;
    }();
    return kCells;
}

const std::array<std::array<std::uint8_t, kBallSize>, kBallSize>& ballSprite()
{
    static const auto kSprite = [] {
        std::array<std::array<std::uint8_t, kBallSize>, kBallSize> sprite{};
        for (std::uint32_t y = 0; y < kBallSize; ++y) {
            for (std::uint32_t x = 0; x < kBallSize; ++x) {
                sprite[y][x] = ballShade(x, y);
            }
        }
        return sprite;
    }();
    return kSprite;
}

} // namespace

FrameRenderer::FrameRenderer(const SceneView& view)
    : mView(view),
      mSequence(kNoSequence),
      mBackground(std::size_t{view.width} * view.height),
      mImage(mBackground.size())
{
}

std::span<const std::uint8_t> FrameRenderer::render(const FrameStamp& stamp)
{
    useSequence(stamp.sequence);
    restore(mBallArea);
    restore(mDartArea);
    drawBall(stamp);
    drawDart(stamp);
    drawText(stamp);
    drawMarks(stamp);
    const auto header = encode(stamp);
    std::memcpy(mImage.data(), header.data(), std::min(header.size(), mImage.size()));
    return mImage;
}

void FrameRenderer::useSequence(std::uint32_t sequence)
{
    if (sequence == mSequence) {
        return;
    }
    mSequence = sequence;
    std::size_t at = 0;
    for (std::uint32_t y = 0; y < mView.height; ++y) {
        for (std::uint32_t x = 0; x < mView.width; ++x) {
            mBackground[at] = backgroundShade(mView, sequence, x, y);
            ++at;
        }
    }
    mImage = mBackground;
}

FrameRenderer::Area FrameRenderer::areaOf(std::uint32_t sensorX, std::uint32_t sensorY,
                                          std::uint32_t sensorWidth,
                                          std::uint32_t sensorHeight) const
{
    // Objects and their sizes are even, decimation is 1 or 2: the divisions leave no rest.
    const auto clip = [](std::uint32_t place, std::uint32_t offset, std::uint32_t limit) {
        return place <= offset ? 0 : std::min(place - offset, limit);
    };
    const std::uint32_t step = mView.decimation;
    return {.left = clip(sensorX / step, mView.offsetX, mView.width),
            .top = clip(sensorY / step, mView.offsetY, mView.height),
            .right = clip((sensorX + sensorWidth) / step, mView.offsetX, mView.width),
            .bottom = clip((sensorY + sensorHeight) / step, mView.offsetY, mView.height)};
}

void FrameRenderer::restore(const Area& area)
{
    for (std::uint32_t y = area.top; y < area.bottom; ++y) {
        std::memcpy(row(y) + area.left, &mBackground[std::size_t{y} * mView.width] + area.left,
                    area.right - area.left);
    }
}

void FrameRenderer::drawBall(const FrameStamp& stamp)
{
    const ScenePoint ball = ballPosition(mView, stamp.sequence, stamp.number);
    mBallArea = areaOf(ball.x, ball.y, kBallSize, kBallSize);
    for (std::uint32_t y = mBallArea.top; y < mBallArea.bottom; ++y) {
        const auto& shades = ballSprite()[(mView.offsetY + y) * mView.decimation - ball.y];
        std::uint8_t* const pixels = row(y);
        for (std::uint32_t x = mBallArea.left; x < mBallArea.right; ++x) {
            const std::uint8_t shade = shades[(mView.offsetX + x) * mView.decimation - ball.x];
            pixels[x] = shade == 0 ? pixels[x] : shade;
        }
    }
}

void FrameRenderer::drawDart(const FrameStamp& stamp)
{
    const ScenePoint dart = dartPosition(mView, stamp.sequence, stamp.number);
    mDartArea = areaOf(dart.x, dart.y, kDartLength, kDartHeight);
    for (std::uint32_t y = mDartArea.top; y < mDartArea.bottom; ++y) {
        std::memset(row(y) + mDartArea.left, kDartShade, mDartArea.right - mDartArea.left);
    }
}

void FrameRenderer::drawText(const FrameStamp& stamp)
{
    const SceneText text = sceneText(stamp.sequence, stamp.number);
    const std::uint32_t bottom = std::min(kTextTop + kGlyphSize, mView.height);
    for (std::uint32_t i = 0; i < kTextLength; ++i) {
        const std::uint32_t left = kTextLeft + i * kGlyphSize;
        const std::uint32_t right = std::min(left + kGlyphSize, mView.width);
        const GlyphCell& cell = glyphCells()[static_cast<unsigned char>(text[i])];
        for (std::uint32_t y = kTextTop; y < bottom && left < right; ++y) {
            std::memcpy(row(y) + left, cell[y - kTextTop].data(), right - left);
        }
    }
}

void FrameRenderer::drawMarks(const FrameStamp& stamp)
{
    const std::uint32_t columns = std::min(kMarkColumns, mView.width);
    for (std::uint32_t y = 0; y < mView.height; ++y) {
        std::memset(row(y) + mView.width - columns, markShade(stamp.sequence, stamp.number, y),
                    columns);
    }
}

std::vector<std::uint8_t> renderFrame(const SceneView& view, const FrameStamp& stamp)
{
    std::vector<std::uint8_t> frame(std::size_t{view.width} * view.height);
    renderScene(view, stamp.sequence, stamp.number, frame);
    const auto header = encode(stamp);
    std::memcpy(frame.data(), header.data(), std::min(header.size(), frame.size()));
    return frame;
}

} // namespace camera
