#include "TurnQueue.h"

#include <algorithm>

namespace gige::control
{

bool TurnQueue::enter(TimePoint deadline)
{
    std::unique_lock lock(mLock);
    const std::uint64_t ticket = mNextTicket++;
    mTickets.push_back(ticket);
    mClock.waitUntil(lock, mChanged, deadline,
                     [&] { return mClosed || mTickets.front() == ticket; });
    if (!mClosed && mTickets.front() == ticket) {
        return true;
    }
    std::erase(mTickets, ticket);
    mChanged.notify_all();
    return false;
}

void TurnQueue::leave()
{
    const std::lock_guard lock(mLock);
    mTickets.pop_front();
    mChanged.notify_all();
}

void TurnQueue::close()
{
    const std::lock_guard lock(mLock);
    mClosed = true;
    mChanged.notify_all();
}

void TurnQueue::drain()
{
    std::unique_lock lock(mLock);
    mChanged.wait(lock, [this] { return mTickets.empty(); });
}

bool TurnQueue::sleepUntil(TimePoint end)
{
    std::unique_lock lock(mLock);
    return !mClock.waitUntil(lock, mChanged, end, [this] { return mClosed; });
}

} // namespace gige::control
