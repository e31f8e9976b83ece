// The kernel calls: threads, events and locks are real, sleeps are only recorded, the tick count
// is the script's, debug lines go to the record.
#include "StandInKernel.h"

#include "Kernel.h"
#include "StandIn.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace
{

thread_local bool workerThread = false;

/// An event, or a thread's end, which is a manual-reset event.
class Signal
{
  public:
    Signal(bool manualReset, bool signalled) : mManualReset(manualReset), mSignalled(signalled) {}

    void set(bool signalled)
    {
        const std::lock_guard lock(mMutex);
        mSignalled = signalled;
        mChanged.notify_all();
    }

    bool wait(DWORD milliseconds)
    {
        std::unique_lock lock(mMutex);
        const auto signalled = [this] { return mSignalled; };
        if (milliseconds == INFINITE) {
            mChanged.wait(lock, signalled);
        } else if (!mChanged.wait_for(lock, std::chrono::milliseconds(milliseconds), signalled)) {
            return false;
        }
        mSignalled = mManualReset;
        return true;
    }

  private:
    const bool mManualReset;
    std::mutex mMutex;
    std::condition_variable mChanged;
    bool mSignalled;
};

// A handle points to its own share of the signal, so that it may be closed while others wait.
using Handle = std::shared_ptr<Signal>;

HANDLE makeHandle(const Handle& signal)
{
    return new Handle(signal);
}

Handle* fromHandle(HANDLE handle)
{
    return handle == INVALID_HANDLE_VALUE ? nullptr : static_cast<Handle*>(handle);
}

void record(const std::string& text)
{
    StandIn::current().record(StandIn::Kind::Kernel, text);
}

} // namespace

bool isWorkerThread()
{
    return workerThread;
}

HANDLE CreateThread(LPSECURITY_ATTRIBUTES /*attributes*/, std::size_t /*stackSize*/,
                    LPTHREAD_START_ROUTINE start, LPVOID parameter, DWORD /*flags*/,
                    LPDWORD threadId)
{
    static std::atomic<DWORD> lastId{0};
    record("CreateThread");
    if (!StandIn::current().answerTo("CreateThread", Code::Ok).IsOK()) {
        return nullptr;
    }
    if (threadId != nullptr) {
        *threadId = ++lastId;
    }
    const Handle ended = std::make_shared<Signal>(true, false);
    std::thread([=] {
        workerThread = true;
        start(parameter);
        ended->set(true);
    }).detach();
    return makeHandle(ended);
}

HANDLE CreateEventA(LPSECURITY_ATTRIBUTES /*attributes*/, BOOL manualReset, BOOL initialState,
                    LPCSTR /*name*/)
{
    record("CreateEventA");
    return makeHandle(std::make_shared<Signal>(manualReset != FALSE, initialState != FALSE));
}

BOOL SetEvent(HANDLE event)
{
    record("SetEvent");
    const Handle* signal = fromHandle(event);
    if (signal == nullptr) {
        return FALSE;
    }
    (*signal)->set(true);
    return TRUE;
}

DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds)
{
    record("WaitForSingleObject " +
           (milliseconds == INFINITE ? "INFINITE" : std::to_string(milliseconds)));
    const Handle* place = fromHandle(handle);
    if (place == nullptr || !StandIn::current().answerTo("WaitForSingleObject", Code::Ok).IsOK()) {
        return WAIT_FAILED;
    }
    const Handle signal = *place;
    return signal->wait(milliseconds) ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
}

BOOL CloseHandle(HANDLE handle)
{
    record("CloseHandle");
    Handle* signal = fromHandle(handle);
    delete signal;
    return signal == nullptr ? FALSE : TRUE;
}

void Sleep(DWORD milliseconds)
{
    StandIn::current().advanceTick(milliseconds);
    StandIn::current().record(StandIn::Kind::Call, "Sleep " + std::to_string(milliseconds));
}

DWORD GetTickCount()
{
    return StandIn::current().tick();
}

void OutputDebugStringA(LPCSTR text)
{
    StandIn::current().log(text);
}

#ifndef _WIN32
void InitializeCriticalSection(CRITICAL_SECTION* section)
{
    pthread_mutexattr_t recursive;
    pthread_mutexattr_init(&recursive);
    pthread_mutexattr_settype(&recursive, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(&section->mutex, &recursive);
    pthread_mutexattr_destroy(&recursive);
}

void EnterCriticalSection(CRITICAL_SECTION* section)
{
    pthread_mutex_lock(&section->mutex);
}

void LeaveCriticalSection(CRITICAL_SECTION* section)
{
    pthread_mutex_unlock(&section->mutex);
}

void DeleteCriticalSection(CRITICAL_SECTION* section)
{
    pthread_mutex_destroy(&section->mutex);
}
#endif
