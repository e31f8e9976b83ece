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

std::uint16_t counterOf(std::uint32_t counted)
{
    constexpr std::uint32_t kWrap = 65'535; // frames that are counted each time the counter wraps
    return static_cast<std::uint16_t>(counted % kWrap);
}

std::optional<std::uint32_t> findGivenTrigger(std::uint16_t shown, std::uint16_t last,
                                              std::uint32_t frames)
{
    const std::uint32_t after = static_cast<std::uint16_t>(last - shown); // it wraps
    return after > frames ? std::nullopt : std::optional(frames - after);
}

const char* endCause(const Recording& recording, const FrameHeader& last, std::uint32_t capacity)
{
    if (isAfterTrigger(last)) {
        return "trigger";
    }
    return !recording.info.isRing && recording.frames >= capacity ? "full" : "stopped";
}

} // namespace telvo
