#ifndef TELVO_TOOLS_TELVO_FRAMESOURCE_H
#define TELVO_TOOLS_TELVO_FRAMESOURCE_H

#include "CameraSession.h"
#include "Recording.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <stop_token>

namespace telvo
{

/// Frames of a sequence: the first and every so manieth after it.
struct FrameSelection {
    std::uint32_t first;
    std::uint32_t count; // frames selected
    std::uint32_t every; // 1: all
};

struct RecordedFrame {
    std::uint32_t number; // in the sequence
    std::span<const std::uint8_t> bytes;
};

/// Selected frames, read out of the camera's memory one after the other.
class FrameSource
{
  public:
    FrameSource() = default;
    virtual ~FrameSource() = default;
    FrameSource(const FrameSource&) = delete;
    FrameSource& operator=(const FrameSource&) = delete;

    /// The next one; its bytes are valid until the next call. None after the last. Throws Failure,
    /// also when cancelled.
    virtual std::optional<RecordedFrame> next() = 0;
};

/// Reads in blocks, or each frame by itself where most of a block would be dropped. The arguments
/// but the numbers are borrowed until its end.
std::unique_ptr<FrameSource> openFrames(const CameraSession& camera, const Recording& recording,
                                        FrameSelection selection, const std::stop_token& cancel);

/// Reads one frame of the selected sequence by itself; valid until the next one. Throws Failure.
std::span<const std::uint8_t> readFrame(const CameraSession& camera, const RecordingInfo& info,
                                        std::uint32_t number);

} // namespace telvo

#endif
