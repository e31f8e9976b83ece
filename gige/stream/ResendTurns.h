#ifndef TELVO_GIGE_STREAM_RESENDTURNS_H
#define TELVO_GIGE_STREAM_RESENDTURNS_H

#include "StreamSettings.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace gige::stream
{

/// Some of so many slots, one bit for each.
template <std::size_t kSlots>
class SlotSet
{
    static_assert(kSlots % 64 == 0);

  public:
    void insert(std::size_t slot)
    {
        mCount += contains(slot) ? 0U : 1U;
        mWords[slot / 64] |= bit(slot);
    }
    void erase(std::size_t slot)
    {
        mCount -= contains(slot) ? 1U : 0U;
        mWords[slot / 64] &= ~bit(slot);
    }
    bool contains(std::size_t slot) const { return (mWords[slot / 64] & bit(slot)) != 0; }
    bool empty() const { return mCount == 0; }

    /// The first from `slot` on; kSlots if there is none.
    std::size_t first(std::size_t slot) const
    {
        if (empty() || slot >= kSlots) {
            return kSlots;
        }
        std::uint64_t word = mWords[slot / 64] >> (slot % 64) << (slot % 64);
        std::size_t index = slot / 64;
        while (word == 0 && ++index < mWords.size()) {
            word = mWords[index];
        }
        return word == 0 ? kSlots : index * 64 + static_cast<std::size_t>(std::countr_zero(word));
    }

  private:
    static constexpr std::uint64_t bit(std::size_t slot) { return std::uint64_t{1} << (slot % 64); }

    std::array<std::uint64_t, kSlots / 64> mWords{};
    std::size_t mCount = 0;
};

/// When each of so many slots has its turn. A tree, each node of which has the earlier time of its
/// two children: however many slots wait, a change and a search take as many steps as the tree is
/// high.
template <std::size_t kSlots>
class SlotTimes
{
    static_assert(std::has_single_bit(kSlots));

  public:
    static constexpr Time kNever = Time::max();

    SlotTimes() { mNodes.fill(kNever); }

    void set(std::size_t slot, Time time)
    {
        std::size_t node = kSlots + slot;
        while (mNodes[node] != time) {
            mNodes[node] = time;
            if (node == kRoot) {
                return;
            }
            time = std::min(time, mNodes[node ^ 1U]);
            node /= 2;
        }
    }

    Time at(std::size_t slot) const { return mNodes[kSlots + slot]; }
    Time earliest() const { return mNodes[kRoot]; }

    /// The first slot from `slot` on whose time has come; kSlots if there is none.
    std::size_t firstDue(std::size_t slot, Time now) const
    {
        if (slot >= kSlots || now < earliest()) {
            return kSlots;
        }
        std::size_t node = kSlots + slot;
        while (now < mNodes[node]) {
            node = nodeBehind(node);
            if (node == kRoot) {
                return kSlots;
            }
        }
        while (node < kSlots) {
            node = now < mNodes[2 * node] ? 2 * node + 1 : 2 * node;
        }
        return node - kSlots;
    }

  private:
    static constexpr std::size_t kRoot = 1;

    /// The next subtree to the right; the root if there is none.
    static std::size_t nodeBehind(std::size_t node)
    {
        while (node % 2 == 1 && node != kRoot) {
            node /= 2;
        }
        return node == kRoot ? kRoot : node + 1;
    }

    std::array<Time, 2 * kSlots> mNodes; // children of n: 2n and 2n + 1; the last are the slots
};

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
