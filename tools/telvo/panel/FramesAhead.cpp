#include "FramesAhead.h"

namespace telvo
{

namespace
{

constexpr std::int64_t kWidestStep = 64; // a wider one is a jump, not a walk

} // namespace

void FramesAhead::wanted(FramePlace place, std::uint32_t frames)
{
    std::int64_t step = 1;
    if (mLast && mLast->sequence == place.sequence && mLast->frame != place.frame) {
        const std::int64_t way = std::int64_t{place.frame} - mLast->frame;
        step = way < -kWidestStep || way > kWidestStep ? 1 : way;
    }
    mLast = place;
    mAhead.clear();
    for (int i = 1; i <= kSteps; ++i) {
        add(place.frame + i * step, frames);
    }
    for (const std::int64_t neighbour : {1, -1, 2, -2}) {
        add(place.frame + neighbour, frames);
    }
}

void FramesAhead::add(std::int64_t frame, std::uint32_t frames)
{
    if (frame >= 0 && frame < frames) {
        mAhead.push_back({mLast->sequence, static_cast<std::uint32_t>(frame)});
    }
}

std::optional<FramePlace> FramesAhead::next(const FrameCache& cache)
{
    while (!mAhead.empty()) {
        const FramePlace place = mAhead.front();
        mAhead.pop_front();
        if (!cache.has(place)) {
            return place;
        }
    }
    return std::nullopt;
}

} // namespace telvo
