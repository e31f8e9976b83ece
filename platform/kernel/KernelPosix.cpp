#include "KernelPosix.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <new>
#include <thread>

namespace
{

/// What a wait looks at. Shared by a handle and, for a thread, by the thread itself.
class Signal
{
  public:
    Signal(bool manualReset, bool initialState) : mManualReset(manualReset), mSet(initialState) {}

    void set()
    {
        const std::lock_guard lock(mMutex);
        mSet = true;
        if (mManualReset) {
            mChanged.notify_all();
        } else {
            mChanged.notify_one();
        }
    }

    bool wait(DWORD milliseconds)
    {
        std::unique_lock lock(mMutex);
        const auto isSet = [this] { return mSet; };
        if (milliseconds == INFINITE) {
            mChanged.wait(lock, isSet);
        } else if (!mChanged.wait_for(lock, std::chrono::milliseconds(milliseconds), isSet)) {
            return false;
        }
        if (!mManualReset) {
            mSet = false;
        }
        return true;
    }

  private:
    std::mutex mMutex;
    std::condition_variable mChanged;
    const bool mManualReset;
    bool mSet;
};

/// What a HANDLE points to.
struct KernelObject {
    std::shared_ptr<Signal> signal;
    std::mutex threadLock; // two waiters may see the thread's end
    std::thread thread;    // empty for events

    void joinThread()
    {
        const std::lock_guard lock(threadLock);
        if (thread.joinable()) {
            thread.join();
        }
    }
};

/// @return null without memory
std::unique_ptr<KernelObject> newObject(bool manualReset, bool initialState)
{
    try {
        auto created = std::make_unique<KernelObject>();
        created->signal = std::make_shared<Signal>(manualReset, initialState);
        return created;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

/// @return false without memory, or when the system gives no thread
bool startThread(KernelObject& object, LPTHREAD_START_ROUTINE start, LPVOID parameter)
{
    try {
        object.thread = std::thread([start, parameter, ended = object.signal] {
            start(parameter);
            ended->set();
        });
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

bool isUsable(HANDLE handle)
{
    return handle != nullptr && handle != INVALID_HANDLE_VALUE;
}

KernelObject& object(HANDLE handle)
{
    return *static_cast<KernelObject*>(handle);
}

DWORD nextThreadId()
{
    static std::atomic<DWORD> last{0};
    return ++last;
}

} // namespace

void InitializeCriticalSection(CRITICAL_SECTION* section)
{
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(&section->mutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
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

HANDLE CreateThread(LPSECURITY_ATTRIBUTES /*attributes*/, std::size_t /*stackSize*/,
                    LPTHREAD_START_ROUTINE start, LPVOID parameter, DWORD /*flags*/,
                    LPDWORD threadId)
{
    auto created = newObject(true, false);
    if (created == nullptr || !startThread(*created, start, parameter)) {
        return nullptr;
    }
    if (threadId != nullptr) {
        *threadId = nextThreadId();
    }
    return created.release();
}

HANDLE CreateEventA(LPSECURITY_ATTRIBUTES /*attributes*/, BOOL manualReset, BOOL initialState,
                    LPCSTR /*name*/)
{
    return newObject(manualReset != FALSE, initialState != FALSE).release();
}

BOOL SetEvent(HANDLE event)
{
    if (!isUsable(event)) {
        return FALSE;
    }
    object(event).signal->set();
    return TRUE;
}

DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds)
{
    if (!isUsable(handle)) {
        return WAIT_FAILED;
    }
    if (!object(handle).signal->wait(milliseconds)) {
        return WAIT_TIMEOUT;
    }
    // The thread has signalled its end; join it, so that none of its code runs after the wait and
    // the library may be unloaded.
    object(handle).joinThread();
    return WAIT_OBJECT_0;
}

BOOL CloseHandle(HANDLE handle)
{
    if (!isUsable(handle)) {
        return FALSE;
    }
    const std::unique_ptr<KernelObject> closed(static_cast<KernelObject*>(handle));
    if (closed->thread.joinable()) {
        closed->thread.detach();
    }
    return TRUE;
}

void Sleep(DWORD milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

DWORD GetTickCount()
{
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<DWORD>(
        std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
}
