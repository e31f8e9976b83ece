#include "Thread.h"

#include <exception>
#include <utility>

namespace
{
constexpr DWORD kStopLimit = 5000; // ms
constexpr DWORD kFailedExitCode = 1;
} // namespace

Thread::~Thread()
{
    if (mHandle) {
        mStopRequested = true;
        static_cast<void>(join());
    }
    awaitOverdue();
}

void Thread::start()
{
    // Before the thread exists, so that it cannot take the flag of an earlier run for its own.
    mStopRequested = false;
    mHandle = UniqueHandle(CreateThread(nullptr, 0, &Thread::run, this, 0, &mId));
    mRunning = static_cast<bool>(mHandle);
}

bool Thread::stop()
{
    mStopRequested = true;
    wake();
    return join();
}

void Thread::finish()
{
    if (mHandle) {
        static_cast<void>(stop());
    }
    awaitOverdue();
}

bool Thread::join()
{
    const bool hasEnded = WaitForSingleObject(mHandle.get(), kStopLimit) != WAIT_TIMEOUT;
    if (hasEnded) {
        mHandle.reset();
    } else {
        mOverdue = std::move(mHandle);
    }
    mId = 0;
    mRunning = false;
    return hasEnded;
}

void Thread::awaitOverdue()
{
    if (mOverdue) {
        WaitForSingleObject(mOverdue.get(), INFINITE);
        mOverdue.reset();
    }
}

DWORD WINAPI Thread::run(LPVOID self)
{
    auto* const thread = static_cast<Thread*>(self);
    try {
        thread->mExitCode = thread->Function();
    } catch (const std::exception&) {
        thread->mExitCode = kFailedExitCode; // no memory to go on with
    }
    return thread->exitCode();
}
