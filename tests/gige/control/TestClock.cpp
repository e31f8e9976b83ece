#include "TestClock.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace gige::control
{

namespace
{

/// How often those who wait look whether time has passed, in real time.
constexpr std::chrono::milliseconds kLook{1};

} // namespace

Clock::TimePoint TestClock::now() const
{
    const std::lock_guard lock(mLock);
    return mNow;
}

void TestClock::setThreads(std::size_t threads)
{
    const std::lock_guard lock(mLock);
    mThreads = threads;
    passIfAllWait();
}

void TestClock::leave()
{
    const std::lock_guard lock(mLock);
    mThreads = std::max<std::size_t>(mThreads - 1, 1);
    passIfAllWait();
}

void TestClock::advance(Duration time)
{
    const std::lock_guard lock(mLock);
    mNow += time;
    mPassed.notify_all();
}

void TestClock::passIfAllWait()
{
    if (!mWaitedFor.empty() && mWaitedFor.size() >= mThreads) {
        mNow = std::max(mNow, *mWaitedFor.begin());
        mPassed.notify_all();
    }
}

void TestClock::wait(std::unique_lock<std::mutex>& lock, std::condition_variable& changed,
                     TimePoint until)
{
    std::unique_lock own(mLock);
    const auto place = mWaitedFor.insert(until);
    passIfAllWait();
    if (mNow < until) {
        own.unlock();
        changed.wait_for(lock, kLook);
        own.lock();
    }
    mWaitedFor.erase(place);
}

void TestClock::run(Duration time)
{
    std::unique_lock lock(mLock);
    if (mThreads == 1) {
        mNow += time;
        lock.unlock();
        std::this_thread::sleep_for(5 * kLook);
        return;
    }
    const TimePoint until = mNow + time;
    const auto place = mWaitedFor.insert(until);
    passIfAllWait();
    mPassed.wait(lock, [&] { return mNow >= until; });
    mWaitedFor.erase(place);
}

} // namespace gige::control
