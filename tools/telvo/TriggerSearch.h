#ifndef TELVO_TOOLS_TELVO_TRIGGERSEARCH_H
#define TELVO_TOOLS_TELVO_TRIGGERSEARCH_H

#include "FrameHeader.h"
#include "Recording.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace telvo
{

/// The first frame after the trigger that ended the sequence, or began it: then frame 0. None: no
/// trigger did, or it ended the sequence at once, without a trailer.
/// @param headerOf  reads a frame's header; it is asked for a few frames only
std::optional<std::uint32_t> findTrigger(std::uint32_t frames,
                                         const std::function<FrameHeader(std::uint32_t)>& headerOf);

/// The same for a trigger that the camera knows nothing of, since its user gave it, while the
/// preview showed the frame of a counter. As exact as the preview is prompt; may be behind the last
/// frame. None: it lies before the first.
/// @param last  the counter of the last frame
std::optional<std::uint32_t> findGivenTrigger(std::uint16_t shown, std::uint16_t last,
                                              std::uint32_t frames);

/// The camera's own counter of the newest frame of so many, as expGetCurrentNumberOfImages() counts
/// them.
std::uint16_t counterOf(std::uint32_t counted);

/// "trigger", "full" or "stopped", as far as the recording itself shows.
/// @param capacity  frames that a sequence can hold
const char* endCause(const Recording& recording, const FrameHeader& last, std::uint32_t capacity);

} // namespace telvo

#endif
