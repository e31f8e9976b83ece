#include "TriggerWindow.h"

#include <algorithm>

namespace camera
{

std::uint32_t TriggerWindow::mean(const SceneView& view, std::uint32_t sequence,
                                  std::uint32_t number) const
{
    constexpr std::uint32_t kPlaces = 16;
    const std::uint32_t stepX = std::max(width / kPlaces, 1U);
    const std::uint32_t stepY = std::max(height / kPlaces, 1U);
    std::uint32_t sum = 0;
    std::uint32_t count = 0;
    for (std::uint32_t y = top; y < std::min(top + height, view.height); y += stepY) {
        for (std::uint32_t x = left; x < std::min(left + width, view.width); x += stepX) {
            sum += scenePixel(view, sequence, number, x, y);
            ++count;
        }
    }
    return count == 0 ? 0 : sum / count;
}

bool TriggerWindow::releases(const SceneView& view, std::uint32_t sequence,
                             std::uint32_t number) const
{
    const bool bright = mean(view, sequence, number) >= threshold;
    return bright != darker;
}

} // namespace camera
