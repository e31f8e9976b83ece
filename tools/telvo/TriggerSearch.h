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

/// "trigger", "full" or "stopped", as far as the recording itself shows.
/// @param capacity  frames that a sequence can hold
const char* endCause(const Recording& recording, const FrameHeader& last, std::uint32_t capacity);

} // namespace telvo

#endif
