#ifndef TELVO_GIGE_STREAM_RESENDPLANNER_H
#define TELVO_GIGE_STREAM_RESENDPLANNER_H

#include "OpenBlock.h"
#include "StreamSettings.h"

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
/// block; while no packet is missing it neither searches nor allocates.
class ResendPlanner
{
  public:
    void begin();

    /// Drops what has come since. @return packets that came after they were asked for
    std::uint32_t forgetArrived(const OpenBlock& block);

    /**
     * Looks for losses and due repetitions.
     * @param cutOff  a later block has begun: the rest of this one is not on its way any more
     * @param budget  packets that may newly come under re-request
     * @param ranges  out: what to ask for now is added
     */
    void plan(const OpenBlock& block, const StreamSettings& settings, bool cutOff,
              std::uint32_t budget, Time now, std::vector<PacketRange>& ranges);

    /// The device has not got this packet any more.
    void giveUp(std::uint32_t packetId);
    /// Nor any packet before it.
    void giveUpThrough(std::uint32_t packetId);

    /// Packets under re-request.
    std::uint32_t pending() const;
    bool hasAsked() const { return mAsked; }
    /// Whether a packet that has not come is not asked for any more.
    bool hasGivenUp() const;
    /// When to plan again if no packet comes before.
    std::optional<Time> nextTime(const OpenBlock& block) const;

  private:
    struct Loss {
        std::uint32_t packetId = 0;
        std::uint32_t requests = 0;
        bool givenUp = false;
        Time due{}; // of the next request
    };

    void findGaps(const OpenBlock& block, Time now);
    void findTail(const OpenBlock& block, bool cutOff, Time now);
    void addLosses(const OpenBlock& block, std::uint32_t end);
    static bool takeTurn(Loss& loss, const StreamSettings& settings, std::uint32_t& budget,
                         Time now);

    std::vector<Loss> mLosses;     // ascending
    std::uint32_t mSearchedTo = 0; // packet ids below have been looked at
    std::uint32_t mGapEnd = 0;     // ids below are losses once the reorder time is over
    std::optional<Time> mGapSince;
    std::uint32_t mGivenUpTo = 0; // packet ids below are gone
    bool mTailSearched = false;
    bool mAsked = false;
};

} // namespace gige::stream

#endif
