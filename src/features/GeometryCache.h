#ifndef TELVO_SRC_FEATURES_GEOMETRYCACHE_H
#define TELVO_SRC_FEATURES_GEOMETRYCACHE_H

#include <atomic>
#include <cstdint>
#include <limits>

constexpr std::int32_t kDefaultWidth = 1280;  // pixels
constexpr std::int32_t kDefaultHeight = 1024; // pixels

/// Image geometry in pixels as last read from the camera or written to it. Written by the host's
/// thread, read by the worker threads as well.
struct GeometryCache {
    std::atomic<std::int32_t> offsetX = 0;
    std::atomic<std::int32_t> offsetY = 0;
    std::atomic<std::int32_t> width = kDefaultWidth;
    std::atomic<std::int32_t> height = kDefaultHeight;
    std::atomic<std::int32_t> sensorWidth = kDefaultWidth;
    std::atomic<std::int32_t> sensorHeight = kDefaultHeight;

    /// Bytes per image, one per pixel; 0 for a geometry that holds no image, or none that 32 bits
    /// can count.
    std::uint32_t frameSize() const
    {
        constexpr std::int64_t kMaxFrameSize = std::numeric_limits<std::uint32_t>::max();
        const std::int64_t columns = width;
        const std::int64_t rows = height;
        const bool isImage = columns > 0 && rows > 0 && columns * rows <= kMaxFrameSize;
        return isImage ? static_cast<std::uint32_t>(columns * rows) : 0;
    }
};

#endif
