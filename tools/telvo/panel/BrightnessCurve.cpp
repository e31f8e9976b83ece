#include "BrightnessCurve.h"

#include "SequenceReview.h"

#include <algorithm>
#include <cmath>

namespace telvo
{

namespace
{

/// Each item once, coarse first: every 64th, every 32nd, and so on.
std::vector<std::uint32_t> coarseFirst(const std::vector<std::uint32_t>& items)
{
    std::vector<std::uint32_t> order;
    std::vector<bool> isTaken(items.size(), false);
    for (std::size_t step = 64; step > 0; step /= 2) {
        for (std::size_t i = 0; i < items.size(); i += step) {
            if (!isTaken[i]) {
                isTaken[i] = true;
                order.push_back(items[i]);
            }
        }
    }
    return order;
}

} // namespace

void BrightnessCurve::want(std::uint32_t points)
{
    mPoints = spreadFrames(mFrames, points);
    mOpen = coarseFirst(mPoints);
    std::ranges::reverse(mOpen);
}

std::optional<std::uint32_t> BrightnessCurve::next()
{
    while (!mOpen.empty()) {
        const std::uint32_t frame = mOpen.back();
        mOpen.pop_back();
        if (!mMeans.contains(frame)) {
            return frame;
        }
    }
    return std::nullopt;
}

Json BrightnessCurve::json() const
{
    Json points = Json::array();
    for (const std::uint32_t frame : mPoints) {
        const auto known = mMeans.find(frame);
        if (known != mMeans.end()) {
            points.push_back({{"frame", frame}, {"mean", std::round(known->second * 100) / 100}});
        }
    }
    return {{"points", points}, {"of", mPoints.size()}};
}

bool BrightnessCurve::isWhole() const
{
    return std::ranges::all_of(mPoints,
                               [this](std::uint32_t frame) { return mMeans.contains(frame); });
}

} // namespace telvo
