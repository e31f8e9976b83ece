#include "CancelFlag.h"

#include "Terminal.h"
#include "ToolError.h"

#include <atomic>
#include <chrono>
#include <csignal>

namespace telvo
{

namespace
{

constexpr std::chrono::milliseconds kFlagPoll{20};

// A signal handler knows no object.
std::atomic<bool> cancelled;
std::atomic<const char*> awaited; // null: nothing
std::atomic<int> livingFlags;     // objects alive
static_assert(std::atomic<bool>::is_always_lock_free, "the signal handler may not lock");
static_assert(std::atomic<const char*>::is_always_lock_free, "the signal handler may not lock");

void tellAwaited(const char* what)
{
    if (what != nullptr) {
        writeFromSignal("telvo: ending; waiting for ");
        writeFromSignal(what);
        writeFromSignal("\n");
    }
}

void cancel(int signal)
{
    cancelled = true;
    std::signal(signal, SIG_DFL); // the next one ends the program
    tellAwaited(awaited);
}

void setHandlers(void (*handler)(int))
{
    for (const int signal : endingSignals()) {
        if (std::signal(signal, handler) == SIG_IGN) {
            std::signal(signal, SIG_IGN); // as who started the tool wants it: nohup
        }
    }
}

} // namespace

CancelFlag::CancelFlag()
{
    if (livingFlags++ == 0) {
        cancelled = false;
        setHandlers(cancel);
    }
}

CancelFlag::~CancelFlag()
{
    if (--livingFlags == 0) {
        setHandlers(SIG_DFL);
    }
}

bool CancelFlag::isSet() const
{
    return cancelled;
}

void CancelFlag::check() const
{
    if (cancelled) {
        throw Cancelled();
    }
}

Waiting::Waiting(const char* what) : mOuter(awaited.exchange(what))
{
    if (cancelled) {
        tellAwaited(what);
    }
}

Waiting::~Waiting()
{
    awaited = mOuter;
}

CancelToken::CancelToken()
    : mWatcher([this](const std::stop_token& done) {
          while (!done.stop_requested() && !mCancel.isSet()) {
              std::this_thread::sleep_for(kFlagPoll);
          }
          mSource.request_stop();
      })
{
}

} // namespace telvo
