#include "SlotSizing.h"

#include <algorithm>

namespace gige::net
{

namespace
{

constexpr std::size_t kStep = 256; // bytes; sizes that differ by less share a layout

std::size_t slotSizeFor(std::size_t longest)
{
    return std::clamp((longest + kStep - 1) / kStep * kStep, kStep, kLongestMessage);
}

} // namespace

SlotLayout SlotSizing::layout() const
{
    return {.slotSize = mSlotSize, .count = std::min(kSlotMemory / mSlotSize, kMostSlots)};
}

void SlotSizing::note(std::size_t longest)
{
    mLongest = std::max(mLongest, longest);
    mSlotSize = std::max(mSlotSize, slotSizeFor(longest));
    if (++mCalls == kSizingWindow) {
        mSlotSize = slotSizeFor(mLongest);
        mLongest = 0;
        mCalls = 0;
    }
}

} // namespace gige::net
