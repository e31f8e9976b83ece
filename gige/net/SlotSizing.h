#ifndef TELVO_GIGE_NET_SLOTSIZING_H
#define TELVO_GIGE_NET_SLOTSIZING_H

#include <cstddef>

namespace gige::net
{

/// How memory is cut into slots, one for each message of a receive call.
struct SlotLayout {
    std::size_t slotSize = 0; // bytes
    std::size_t count = 0;
    bool operator==(const SlotLayout&) const = default;
};

/// Bytes cut into slots: they stay within a core's second-level cache, so that the copy out of
/// them reads what the kernel has just written there.
constexpr std::size_t kSlotMemory = 512 * 1024;
constexpr std::size_t kMostSlots = 256;
/// The longest datagram, or run of joined ones, is a little shorter, bytes.
constexpr std::size_t kLongestMessage = 65536;
/// Receive calls after which slots may become smaller.
constexpr int kSizingWindow = 64;

/// Fits the slots to what comes: many small ones for packets that come singly, few large ones for
/// runs of joined packets. Grows at once, shrinks after a while. Pure.
class SlotSizing
{
  public:
    SlotLayout layout() const;

    /// @param longest  bytes of the longest message that a call brought
    void note(std::size_t longest);

  private:
    std::size_t mSlotSize = kLongestMessage;
    std::size_t mLongest = 0; // of this window
    int mCalls = 0;           // in this window
};

} // namespace gige::net

#endif
