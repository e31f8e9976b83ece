#ifndef TELVO_TOOLS_TELVO_PANEL_FRAMESAHEAD_H
#define TELVO_TOOLS_TELVO_PANEL_FRAMESAHEAD_H

#include "FrameCache.h"

#include <cstdint>
#include <deque>
#include <optional>

namespace telvo
{

/// Which frames will be wanted next, by the last two that were: those further on in steps of the
/// same width, and the neighbours.
class FramesAhead
{
  public:
    static constexpr int kSteps = 8; // further on

    /// A frame was wanted. @param frames  how many its sequence has
    void wanted(FramePlace place, std::uint32_t frames);
    /// The next one that is not there yet; none: all are.
    std::optional<FramePlace> next(const FrameCache& cache);

  private:
    void add(std::int64_t frame, std::uint32_t frames);

    std::optional<FramePlace> mLast;
    std::deque<FramePlace> mAhead;
};

} // namespace telvo

#endif
