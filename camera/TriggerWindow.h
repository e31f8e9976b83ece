#ifndef TELVO_CAMERA_TRIGGERWINDOW_H
#define TELVO_CAMERA_TRIGGERWINDOW_H

#include "Scene.h"

#include <cstdint>

namespace camera
{

/// A rectangle of the image whose mean grey value releases the trigger.
struct TriggerWindow {
    std::uint32_t left = 0; // image pixels
    std::uint32_t top = 0;
    std::uint32_t width = 1;
    std::uint32_t height = 1;
    std::uint32_t threshold = 128; ///< grey value, 0..255
    bool darker = false;           ///< true: releases below the threshold, else from it on

    /// Mean grey value of a frame's window, taken at 16 x 16 places at most.
    [[nodiscard]] std::uint32_t mean(const SceneView& view, std::uint32_t sequence,
                                     std::uint32_t number) const;

    [[nodiscard]] bool releases(const SceneView& view, std::uint32_t sequence,
                                std::uint32_t number) const;
};

} // namespace camera

#endif
