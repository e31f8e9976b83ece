#include "FrameFeed.h"

#include <chrono>
#include <utility>

void FrameFeed::feedFrame(Bytes bytes)
{
    feed({.retrieval = Code::Ok, .operation = Code::Ok, .bytes = std::move(bytes)});
}

void FrameFeed::feedError(Code operation, Bytes bytes)
{
    feed({.retrieval = Code::Ok, .operation = operation, .bytes = std::move(bytes)});
}

void FrameFeed::feedFailure(Code retrieval)
{
    feed({.retrieval = retrieval, .operation = Code::Ok, .bytes = {}});
}

void FrameFeed::feed(Delivery delivery)
{
    const std::lock_guard lock(mMutex);
    mDeliveries.push_back(std::move(delivery));
    mChanged.notify_all();
}

bool FrameFeed::waitUntilDrained()
{
    std::unique_lock lock(mMutex);
    return mChanged.wait_for(lock, std::chrono::seconds(10),
                             [this] { return mDeliveries.empty() && mWaiting > 0; });
}

void FrameFeed::start()
{
    const std::lock_guard lock(mMutex);
    mStopped = false;
}

void FrameFeed::stop()
{
    const std::lock_guard lock(mMutex);
    mStopped = true;
    mChanged.notify_all();
}

FrameFeed::Delivery FrameFeed::takeWaiting()
{
    std::unique_lock lock(mMutex);
    ++mWaiting;
    mChanged.notify_all();
    mChanged.wait(lock, [this] { return mStopped || !mDeliveries.empty(); });
    --mWaiting;
    if (mStopped) {
        return {.retrieval = Code::Aborted, .operation = Code::Ok, .bytes = {}};
    }
    Delivery delivery = std::move(mDeliveries.front());
    mDeliveries.pop_front();
    return delivery;
}

std::optional<FrameFeed::Delivery> FrameFeed::takeNow()
{
    const std::lock_guard lock(mMutex);
    if (mDeliveries.empty()) {
        return std::nullopt;
    }
    Delivery delivery = std::move(mDeliveries.front());
    mDeliveries.pop_front();
    return delivery;
}
