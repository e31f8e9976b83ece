#include "TestPacketWatch.h"

namespace gige::stream
{

void TestPacketWatch::note(std::size_t size)
{
    {
        const std::lock_guard lock(mLock);
        mLastSize = size;
    }
    mArrived.notify_all();
}

bool TestPacketWatch::wait(std::size_t size, std::chrono::milliseconds timeout)
{
    std::unique_lock lock(mLock);
    const bool arrived = mArrived.wait_for(lock, timeout, [&] { return mLastSize == size; });
    mLastSize.reset();
    return arrived;
}

} // namespace gige::stream
