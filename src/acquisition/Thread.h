#ifndef TELVO_SRC_ACQUISITION_THREAD_H
#define TELVO_SRC_ACQUISITION_THREAD_H

#include "Kernel.h"
#include "UniqueHandle.h"

#include <atomic>
#include <new>

/**
 * A worker thread. Its owner starts and stops it and destroys the object; the body polls
 * isStopRequested(). All operations but that one are the owner's; the flags and the exit code may
 * be read by any thread.
 */
class Thread
{
  public:
    /// The thread's body. @return the exit code
    virtual DWORD Function() = 0;
    /// Stops the thread if it runs, but without wake(). A class whose body uses its own members
    /// calls finish() in its destructor, while they still exist.
    virtual ~Thread();
    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;

    /// Without the system's leave for a thread, nothing runs and isRunning() stays false.
    void start();

    /**
     * Asks the body to end and waits for it, at most 5000 ms.
     * @return false: it has not ended in time. It goes on to its end; the object has to live until
     * then, and its destruction waits for it.
     */
    [[nodiscard]] bool stop();

    /// Between start() and stop(), also when the body has returned by itself.
    bool isRunning() const { return mRunning; }
    bool isStopRequested() const { return mStopRequested; }
    /// What the body returned; 0 before.
    DWORD exitCode() const { return mExitCode; }

  protected:
    Thread() = default;

    /// Takes a step of the body that may fail for want of memory, as an answer to an error of the
    /// stream may; the body goes on. @return false: it has failed
    template <typename Step>
    static bool attempt(Step step) noexcept
    {
        try {
            step();
            return true;
        } catch (const std::bad_alloc&) {
            return false;
        }
    }

    /// Called by stop() after the stop flag is set, to end a wait of the body. May come at any
    /// moment of the body's life.
    virtual void wake() {}

    /// Stops the thread if it runs; then waits, without limit, for one that a stop has left behind.
    void finish();

  private:
    static DWORD WINAPI run(LPVOID self);
    bool join();
    void awaitOverdue();

    UniqueHandle mHandle;
    DWORD mId = 0;
    UniqueHandle mOverdue; // handle of a thread that did not end in time
    std::atomic<bool> mStopRequested{false};
    std::atomic<bool> mRunning{false};
    std::atomic<DWORD> mExitCode{0};
};

#endif
