#include "CancelFlag.h"

#include <atomic>
#include <csignal>

namespace telvo
{

namespace
{

std::atomic<bool> cancelled; // a signal handler knows no object
static_assert(std::atomic<bool>::is_always_lock_free, "the signal handler may not lock");

void cancel(int signal)
{
    cancelled = true;
    std::signal(signal, SIG_DFL); // the next one ends the program
}

} // namespace

CancelFlag::CancelFlag()
{
    cancelled = false;
    mOldInterrupt = std::signal(SIGINT, cancel);
    mOldTerminate = std::signal(SIGTERM, cancel);
}

CancelFlag::~CancelFlag()
{
    std::signal(SIGINT, mOldInterrupt);
    std::signal(SIGTERM, mOldTerminate);
}

bool CancelFlag::isSet() const
{
    return cancelled;
}

} // namespace telvo
