#include "TriggerSearch.h"

namespace telvo
{

namespace
{

bool isAfterTrigger(const FrameHeader& header)
{
    return (header.flags & kFlagTrailer) != 0;
}

} // namespace

std::optional<std::uint32_t> findTrigger(std::uint32_t frames,
                                         const std::function<FrameHeader(std::uint32_t)>& headerOf)
{
    if (frames == 0) {
        return std::nullopt;
    }
    if ((headerOf(0).flags & kFlagTrigger) != 0) {
        return 0;
    }
    if (!isAfterTrigger(headerOf(frames - 1))) {
        return std::nullopt;
    }
    // Behind the trigger all frames are the trailer's: halve until its first one is found.
    std::uint32_t before = 0;
    std::uint32_t after = frames - 1;
    while (after - before > 1) {
        const std::uint32_t middle = before + (after - before) / 2;
        (isAfterTrigger(headerOf(middle)) ? after : before) = middle;
    }
    return isAfterTrigger(headerOf(before)) ? before : after;
}

const char* endCause(const Recording& recording, const FrameHeader& last, std::uint32_t capacity)
{
    if (isAfterTrigger(last)) {
        return "trigger";
    }
    return !recording.info.isRing && recording.frames >= capacity ? "full" : "stopped";
}

} // namespace telvo
