#ifndef TELVO_TOOLS_TELVO_SEQUENCEREVIEW_H
#define TELVO_TOOLS_TELVO_SEQUENCEREVIEW_H

#include "FrameHeader.h"
#include "Json.h"
#include "Recording.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace telvo
{

/// So many of a sequence's frames, evenly spread from its first to its last; all where there are
/// fewer.
std::vector<std::uint32_t> spreadFrames(std::uint32_t frames, std::uint32_t count);

/// What a few of a sequence's frames tell of it.
struct SequenceReview {
    Recording recording;
    std::map<std::uint32_t, FrameHeader> headers; // of the frames looked at, by their numbers

    /// From the first to the last frame; none for fewer than two frames or times of day.
    std::optional<double> seconds() const;

    struct Bounds {
        std::uint32_t after; // the trigger came behind this frame
        std::uint32_t by;    // and before this one or at it
    };
    /// Where the trigger of a ring lies; none: there is none among the frames.
    std::optional<Bounds> trigger() const;
};

/// Cells of a table, under reviewTitles().
std::vector<std::string> rowOf(const SequenceReview& review);
std::vector<std::string> reviewTitles();

Json jsonOf(const SequenceReview& review);

} // namespace telvo

#endif
