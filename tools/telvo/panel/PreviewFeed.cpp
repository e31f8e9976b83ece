#include "PreviewFeed.h"

namespace telvo
{

void PreviewFeed::wish(ClientId client, const PictureWish& wish)
{
    const std::lock_guard guard(mLock);
    if (wish.width == 0) {
        mViewers.erase(client);
    } else {
        mViewers[client] = {.wish = wish};
    }
}

void PreviewFeed::seen(ClientId client, std::uint64_t number)
{
    const std::lock_guard guard(mLock);
    const auto viewer = mViewers.find(client);
    if (viewer != mViewers.end() && viewer->second.awaited == number) {
        viewer->second.awaited = 0;
    }
}

void PreviewFeed::forget(ClientId client)
{
    const std::lock_guard guard(mLock);
    mViewers.erase(client);
}

std::vector<PreviewFeed::Viewer> PreviewFeed::takeDue(std::uint64_t number)
{
    const std::lock_guard guard(mLock);
    std::vector<Viewer> due;
    for (auto& [client, state] : mViewers) {
        if (state.awaited == 0) {
            state.awaited = number;
            due.push_back({client, state.wish});
        }
    }
    return due;
}

} // namespace telvo
