#ifndef TELVO_GIGE_STREAM_RESENDTURNS_H
#define TELVO_GIGE_STREAM_RESENDTURNS_H

#include "SlotSet.h"
#include "SlotTimes.h"
#include "StreamSettings.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace gige::stream
{

/// Which of the open blocks have to be looked at for resends: those with news, those whose time has
/// come, and, as long as packets may newly come under re-request, those that wait for that. However
/// many others are open, they cost nothing.
template <std::size_t kSlots>
class ResendTurns
{
  public:
    /// A block has news.
    void wake(std::size_t slot) { mNews.insert(slot); }

    /// A block has been looked at. @param until  its next turn; none: when it has news
    void wait(std::size_t slot, std::optional<Time> until, bool forBudget, Time now)
    {
        mNews.erase(slot);
        forBudget ? mForBudget.insert(slot) : mForBudget.erase(slot);
        // With every packet the time moves on: looked at too early, a block is looked at again.
        const Time time = until.value_or(kNever);
        if (time < mTimes.at(slot) || mTimes.at(slot) <= now) {
            mTimes.set(slot, time);
        }
    }

    void forget(std::size_t slot)
    {
        mNews.erase(slot);
        mForBudget.erase(slot);
        mTimes.set(slot, kNever);
    }

    /// No block has its turn before, unless it has news or gets budget; none: never.
    std::optional<Time> next() const
    {
        const Time time = mTimes.earliest();
        return time == kNever ? std::nullopt : std::optional(time);
    }

    /// The first slot from `slot` on that has its turn; kSlots if there is none.
    std::size_t first(std::size_t slot, Time now, bool hasBudget) const
    {
        const std::size_t due = std::min(mNews.first(slot), mTimes.firstDue(slot, now));
        return hasBudget ? std::min(due, mForBudget.first(slot)) : due;
    }

  private:
    static constexpr Time kNever = SlotTimes<kSlots>::kNever;

    SlotSet<kSlots> mNews;
    SlotSet<kSlots> mForBudget;
    SlotTimes<kSlots> mTimes;
};

} // namespace gige::stream

#endif
