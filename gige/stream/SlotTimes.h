#ifndef TELVO_GIGE_STREAM_SLOTTIMES_H
#define TELVO_GIGE_STREAM_SLOTTIMES_H

#include "StreamSettings.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>

namespace gige::stream
{

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

} // namespace gige::stream

#endif
