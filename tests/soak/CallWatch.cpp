#include "CallWatch.h"

#include <cstdio>
#include <cstdlib>

CallWatch::~CallWatch()
{
    {
        const std::lock_guard lock(mLock);
        mStop = true;
    }
    mChanged.notify_all();
    mThread.join();
}

void CallWatch::begin(const std::string& name, std::chrono::seconds limit)
{
    {
        const std::lock_guard lock(mLock);
        mName = name;
        mDeadline = Clock::now() + limit;
    }
    mChanged.notify_all();
}

void CallWatch::run()
{
    std::unique_lock lock(mLock);
    while (!mStop) {
        if (mName.empty()) {
            mChanged.wait(lock);
            continue;
        }
        const Clock::time_point deadline = mDeadline;
        mChanged.wait_until(lock, deadline);
        if (!mStop && !mName.empty() && Clock::now() >= mDeadline) {
            std::printf("FAILED: %s does not return\n", mName.c_str());
            std::fflush(stdout);
            std::_Exit(EXIT_FAILURE); // the call at hand would keep an ordinary exit waiting
        }
    }
}
