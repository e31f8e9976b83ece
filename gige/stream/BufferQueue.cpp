#include "BufferQueue.h"

#include <algorithm>
#include <utility>

namespace gige::stream
{

void BufferChain::push(StreamBuffer& buffer)
{
    buffer.mNext = nullptr;
    if (mFirst == nullptr) {
        mFirst = &buffer;
    } else {
        mLast->mNext = &buffer;
    }
    mLast = &buffer;
}

void BufferChain::pushFirst(StreamBuffer& buffer)
{
    buffer.mNext = mFirst;
    mFirst = &buffer;
    if (buffer.mNext == nullptr) {
        mLast = &buffer;
    }
}

StreamBuffer* BufferChain::pop()
{
    StreamBuffer* const popped = mFirst;
    if (popped != nullptr) {
        mFirst = std::exchange(popped->mNext, nullptr);
    }
    return popped;
}

std::uint64_t CompletedBuffers::wakeCount() const
{
    const std::lock_guard lock(mLock);
    return mWakes;
}

void CompletedBuffers::wakeRetrievals()
{
    {
        const std::lock_guard lock(mLock);
        ++mWakes;
    }
    mCompleted.notify_all();
}

Retrieved CompletedBuffers::retrieve(std::chrono::milliseconds timeout)
{
    return retrieve(timeout, wakeCount());
}

Retrieved CompletedBuffers::retrieve(std::chrono::milliseconds timeout, std::uint64_t wakes)
{
    std::unique_lock lock(mLock);
    mCompleted.wait_for(lock, timeout, [&] { return mWakes != wakes || mDone.first() != nullptr; });
    if (mWakes != wakes) {
        return {.status = RetrieveStatus::Woken};
    }
    StreamBuffer* const buffer = mDone.pop();
    if (buffer == nullptr) {
        return {.status = RetrieveStatus::TimedOut};
    }
    buffer->mInStream = false;
    return {.status = RetrieveStatus::Buffer, .buffer = buffer};
}

bool BufferQueue::queue(StreamBuffer& buffer, Time now)
{
    const std::lock_guard lock(mLock);
    if (!enter(buffer, now)) {
        return false;
    }
    mQueued.push(buffer);
    return true;
}

bool BufferQueue::queueFirst(StreamBuffer& buffer, Time now)
{
    const std::lock_guard lock(mLock);
    if (!enter(buffer, now)) {
        return false;
    }
    mQueued.pushFirst(buffer);
    return true;
}

bool BufferQueue::enter(StreamBuffer& buffer, Time now)
{
    if (buffer.mInStream) {
        return false;
    }
    buffer.mInStream = true;
    buffer.mQueuedAt = now;
    return true;
}

StreamBuffer* BufferQueue::take()
{
    const std::lock_guard lock(mLock);
    return mQueued.pop();
}

std::optional<Time> BufferQueue::waitingSince() const
{
    const std::lock_guard lock(mLock);
    std::optional<Time> longest;
    for (const StreamBuffer* buffer = mQueued.first(); buffer != nullptr; buffer = buffer->mNext) {
        longest = std::min(longest.value_or(buffer->mQueuedAt), buffer->mQueuedAt);
    }
    return longest;
}

void BufferQueue::complete(StreamBuffer& buffer)
{
    {
        const std::lock_guard lock(mLock);
        mDone.push(buffer);
    }
    mCompleted.notify_one();
}

void BufferQueue::abort()
{
    {
        const std::lock_guard lock(mLock);
        while (StreamBuffer* const buffer = mQueued.pop()) {
            buffer->setInfo({.result = BlockResult::Aborted});
            mDone.push(*buffer);
        }
    }
    mCompleted.notify_all();
}

void BufferQueue::releaseAll()
{
    const std::lock_guard lock(mLock);
    for (BufferChain* chain : {&mQueued, &mDone}) {
        while (StreamBuffer* const buffer = chain->pop()) {
            buffer->mInStream = false;
        }
    }
}

} // namespace gige::stream
