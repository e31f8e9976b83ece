#include "FrameRange.h"

#include "CountText.h"
#include "ToolError.h"

#include <algorithm>
#include <string>

namespace telvo
{

namespace
{

FrameSelection thinned(std::uint32_t first, std::uint32_t frames, std::uint32_t every)
{
    return {.first = first, .count = (frames - 1) / every + 1, .every = every};
}

/// What there is of the frames on both sides.
FrameSelection selectAround(std::uint32_t trigger, std::uint32_t distance, std::uint32_t frames,
                            std::uint32_t every)
{
    const std::uint32_t first = trigger - std::min(trigger, distance);
    const std::uint32_t last = trigger + std::min(frames - 1 - trigger, distance);
    return thinned(first, last - first + 1, every);
}

} // namespace

FrameSelection selectFrames(const FrameRange& range, const Recording& recording,
                            std::optional<std::uint32_t> trigger)
{
    const std::string name = "sequence " + std::to_string(recording.sequence);
    if (range.aroundTrigger) {
        if (!trigger) {
            throw Failure(name + " shows no trigger; choose its frames by --first and --count");
        }
        return selectAround(*trigger, *range.aroundTrigger, recording.frames, range.every);
    }
    if (range.first >= recording.frames) {
        throw Failure(name + " has " + countText(recording.frames, "frame") +
                      "; choose --first among them, from 0");
    }
    FrameSelection selection = thinned(range.first, recording.frames - range.first, range.every);
    if (range.count.value_or(0) > selection.count) {
        throw Failure((selection.count == 1 ? "there is only " : "there are only ") +
                      countText(selection.count, "such frame") + " from frame " +
                      std::to_string(range.first) + " on; ask for fewer");
    }
    selection.count = range.count.value_or(selection.count);
    return selection;
}

} // namespace telvo
