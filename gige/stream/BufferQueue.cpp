#include "BufferQueue.h"

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
    if (buffer.mInStream) {
        return false;
    }
    buffer.mInStream = true;
    buffer.mQueuedAt = now;
    mQueued.push(buffer);
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
    const StreamBuffer* const first = mQueued.first();
    return first == nullptr ? std::nullopt : std::optional(first->mQueuedAt);
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
