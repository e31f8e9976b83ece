#include "ReadoutRequest.h"

#include <utility>

ReadoutRequest::ReadoutRequest() : mChanged(CreateEventA(nullptr, FALSE, FALSE, nullptr)) {}

void ReadoutRequest::begin()
{
    const std::lock_guard lock(mLock);
    mIsAborted = false;
    mIsAwaited = false;
}

void ReadoutRequest::start(const FrameRange& range)
{
    const std::lock_guard lock(mLock);
    ++mSending;
    mAcquired = 0;
    mOrdered = static_cast<std::int32_t>(std::int64_t{range.last} - range.first + 1);
    mIsComplete = false;
    // Pending from here on: the last frame may come before the camera's acknowledge does.
    mIsPending = true;
}

void ReadoutRequest::refuse()
{
    const std::lock_guard lock(mLock);
    mIsPending = false;
}

void ReadoutRequest::accept(const FrameRange& range)
{
    const std::lock_guard lock(mLock);
    mAccepted = range;
    mIsAwaited = true;
}

std::optional<FrameRange> ReadoutRequest::accepted() const
{
    const std::lock_guard lock(mLock);
    return mAccepted;
}

ReadoutRequest::Progress ReadoutRequest::progress() const
{
    const std::lock_guard lock(mLock);
    return {.sending = mSending, .acquired = mAcquired, .ordered = mOrdered};
}

void ReadoutRequest::count(const Progress& progress)
{
    const std::lock_guard lock(mLock);
    if (progress.sending == mSending) {
        ++mAcquired;
    }
}

bool ReadoutRequest::interrupt()
{
    const std::lock_guard lock(mLock);
    return std::exchange(mIsPending, false);
}

std::optional<std::int32_t> ReadoutRequest::complete()
{
    const std::lock_guard lock(mLock);
    if (mAcquired != mOrdered || !std::exchange(mIsPending, false)) {
        return std::nullopt;
    }
    mIsComplete = true;
    return mAcquired;
}

void ReadoutRequest::signal()
{
    SetEvent(mChanged.get());
}

void ReadoutRequest::abort()
{
    {
        const std::lock_guard lock(mLock);
        mIsAborted = true;
    }
    signal();
}

void ReadoutRequest::end()
{
    {
        const std::lock_guard lock(mLock);
        mHasEnded = true;
    }
    signal();
}

ReadoutRequest::Ending ReadoutRequest::await()
{
    std::optional<Ending> ending = endingBeforeWait();
    while (!ending) {
        const bool isSignalled = WaitForSingleObject(mChanged.get(), INFINITE) == WAIT_OBJECT_0;
        ending = isSignalled ? endingAfterSignal() : endingAfterFailedWait();
    }
    return *ending;
}

std::optional<RequestResult> ReadoutRequest::result() const
{
    if (mIsAborted) {
        return RequestResult::Aborted;
    }
    if (mHasEnded) {
        return RequestResult::ThreadEnded;
    }
    return mIsComplete ? std::optional(RequestResult::Complete) : std::nullopt;
}

ReadoutRequest::Ending ReadoutRequest::ending(RequestResult result,
                                              std::optional<std::int32_t> acquired) const
{
    return {.result = result, .acquired = acquired, .ordered = mOrdered};
}

std::optional<ReadoutRequest::Ending> ReadoutRequest::endingBeforeWait() const
{
    const std::lock_guard lock(mLock);
    if (mIsAborted) {
        return ending(RequestResult::Aborted, std::nullopt);
    }
    if (mHasEnded || !mIsAwaited) {
        return ending(RequestResult::ThreadEnded, std::nullopt); // nothing would end the wait
    }
    return std::nullopt;
}

std::optional<ReadoutRequest::Ending> ReadoutRequest::endingAfterSignal()
{
    const std::lock_guard lock(mLock);
    const std::optional<RequestResult> known = result();
    if (!known) {
        return std::nullopt; // the signal of an earlier request
    }
    const Ending found = ending(*known, mAcquired);
    mIsAwaited = found.isExcess();
    return found;
}

std::optional<ReadoutRequest::Ending> ReadoutRequest::endingAfterFailedWait() const
{
    const std::lock_guard lock(mLock);
    return mIsAborted ? std::optional(ending(RequestResult::Aborted, std::nullopt)) : std::nullopt;
}
