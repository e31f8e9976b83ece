#include "FrameCache.h"

namespace telvo
{

const GrayImage* FrameCache::find(FramePlace place)
{
    const auto found = mFrames.find(place);
    if (found == mFrames.end()) {
        return nullptr;
    }
    mUses.splice(mUses.begin(), mUses, found->second.use);
    return &found->second.frame;
}

const GrayImage& FrameCache::put(FramePlace place, GrayImage frame)
{
    if (const GrayImage* const there = find(place)) {
        return *there;
    }
    mUses.push_front(place);
    mBytes += frame.pixels.size();
    const auto entry = mFrames.emplace(place, Entry{std::move(frame), mUses.begin()}).first;
    makeRoom();
    return entry->second.frame;
}

void FrameCache::makeRoom()
{
    while (mBytes > mMostBytes && mUses.size() > 1) {
        const auto oldest = mFrames.find(mUses.back());
        mBytes -= oldest->second.frame.pixels.size();
        mFrames.erase(oldest);
        mUses.pop_back();
    }
}

} // namespace telvo
