#ifndef TELVO_TOOLS_TELVO_FRAMERANGE_H
#define TELVO_TOOLS_TELVO_FRAMERANGE_H

#include "FrameSource.h"

#include <cstdint>
#include <optional>

namespace telvo
{

/// Which frames of a sequence are asked for.
struct FrameRange {
    std::uint32_t first = 0;
    std::optional<std::uint32_t> count{}; // frames to take; none: all from the first on
    std::uint32_t every = 1;
    std::optional<std::uint32_t> aroundTrigger{}; // frames on each side; then only every counts
};

/// @param trigger  the first frame after the trigger
/// Throws Failure where the sequence does not have these frames.
FrameSelection selectFrames(const FrameRange& range, const Recording& recording,
                            std::optional<std::uint32_t> trigger);

} // namespace telvo

#endif
