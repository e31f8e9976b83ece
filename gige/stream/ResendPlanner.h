#ifndef TELVO_GIGE_STREAM_RESENDPLANNER_H
#define TELVO_GIGE_STREAM_RESENDPLANNER_H

#include "OpenBlock.h"
#include "StreamSettings.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace gige::stream
{

/// Packets to ask for again, inclusive.
struct PacketRange {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    bool operator==(const PacketRange&) const = default;
};

/// Finds the missing packets of one block and decides when to ask for which. Reused from block to
/// block; while no packet is missing it neither searches nor allocates. Packets one behind the
/// other that are in the same state are one loss, however many they are, and the losses followed at
/// once are limited, so that whatever packet ids come, neither time nor memory grow with them.
class ResendPlanner
{
  public:
    /// Separate losses after which no more are searched for until some have come.
    static constexpr std::size_t kMaxSearched = 1024;
    /// Those that a loss is parted into count as well, up to here: 48 KiB per block.
    static constexpr std::size_t kMaxLosses = 2 * kMaxSearched;

    void begin();
    /// Nothing more is asked for.
    void stop();

    /// A packet came for the first time. @return whether it had been asked for
    bool noteArrived(std::uint32_t packetId);

    /// Looks for losses and due repetitions.
    /// @param cutOff  a later block has begun: the rest of this one is not on its way any more
    /// @param budget  packets that may newly come under re-request
    /// @param ranges  out: what to ask for now
    void plan(const OpenBlock& block, const StreamSettings& settings, bool cutOff,
              std::uint32_t budget, Time now, std::vector<PacketRange>& ranges);

    /// The device has not got this packet any more.
    void giveUp(std::uint32_t packetId);
    /// Nor any packet before it.
    void giveUpThrough(std::uint32_t packetId);

    /// Packets under re-request.
    std::uint32_t pending() const { return packetsIn(State::Asked); }
    /// Whether some packet has not been asked for yet, for want of budget.
    bool wantsBudget() const { return packetsIn(State::Found) > 0; }
    bool hasAsked() const { return mAsked; }
    /// Whether a packet that has not come is not asked for any more.
    bool hasGivenUp() const { return packetsIn(State::GivenUp) > 0; }
    /// When to plan again if no packet comes before and the budget stays.
    std::optional<Time> nextTime(const OpenBlock& block) const;

    /// Separate losses that are followed; at most kMaxLosses.
    std::size_t lossCount() const { return mLosses.size(); }

  private:
    enum class State : std::uint8_t { Found, Asked, GivenUp };

    struct Loss {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        std::uint32_t requests = 0;
        State state = State::Found;
        Time due{}; // of the next request

        std::uint32_t size() const { return last - first + 1; }
    };

    void findGaps(const OpenBlock& block, Time now);
    void findTail(const OpenBlock& block, bool cutOff, Time now);
    void addLosses(const OpenBlock& block, std::uint32_t end);
    void addLoss(std::uint32_t first, std::uint32_t end, State state);
    void askAgain(const StreamSettings& settings, Time now, std::vector<PacketRange>& ranges);
    void askNew(const StreamSettings& settings, std::uint32_t budget, Time now,
                std::vector<PacketRange>& ranges);
    void ask(Loss& loss, Time now, std::vector<PacketRange>& ranges);

    bool isFull() const { return mLosses.size() >= kMaxSearched; }
    std::size_t lossFrom(std::uint32_t packetId) const;
    bool partBefore(std::size_t index, std::uint32_t packetId);
    void remove(std::size_t index, std::uint32_t packetId);
    void setState(Loss& loss, State state);
    std::uint32_t& packetsIn(State state) { return mPackets[static_cast<std::size_t>(state)]; }
    std::uint32_t packetsIn(State state) const { return mPackets[static_cast<std::size_t>(state)]; }

    std::vector<Loss> mLosses;               // ascending
    std::array<std::uint32_t, 3> mPackets{}; // in losses of each state
    std::uint32_t mSearchedTo = 0;           // packet ids below have been looked at
    std::uint32_t mAskedTo = 0;              // losses below have been asked for or given up
    std::uint32_t mGapEnd = 0;               // ids below are losses once the reorder time is over
    std::optional<Time> mGapSince;
    Time mDue = Time::max();      // no repetition is due before
    std::uint32_t mGivenUpTo = 0; // packet ids below are gone
    bool mTailSearched = false;
    bool mAsked = false;
};

} // namespace gige::stream

#endif
