#ifndef TELVO_GIGE_STREAM_BLOCKASSEMBLER_H
#define TELVO_GIGE_STREAM_BLOCKASSEMBLER_H

#include "BlockSequence.h"
#include "GvspHeader.h"
#include "LossTally.h"
#include "OpenBlock.h"
#include "ResendPlanner.h"
#include "ResendTurns.h"
#include "StreamBuffer.h"
#include "StreamSettings.h"
#include "StreamStatistics.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace gige::stream
{

/// Packets of one block to ask the device for.
struct ResendRequest {
    std::uint64_t blockId = 0;
    bool extendedIds = false;
    PacketRange packets{};
    bool operator==(const ResendRequest&) const = default;
};

/// Where the assembler gets buffers from and where its results go.
class AssemblerHost
{
  public:
    virtual ~AssemblerHost() = default;

    /// The buffer queued first, which is the assembler's now; null if there is none.
    virtual StreamBuffer* takeBuffer() = 0;
    /// Since when a buffer has been waiting in the queue; none if there is none.
    virtual std::optional<Time> waitingSince() = 0;
    /// Gives a buffer back; its info tells how its block ended.
    virtual void complete(StreamBuffer& buffer) = 0;
    virtual void requestResend(const ResendRequest& request) = 0;
};

/// Makes blocks out of packets: pure, with the time handed in, for one thread. Two blocks may be
/// open at once, so that the end of one and the beginning of the next may come mixed. While resends
/// may complete a block, the blocks behind it stay open too, as far as there are buffers. Buffers
/// are completed in the blocks' order.
class BlockAssembler
{
  public:
    /// Cameras with small images send this many in the time of a few resend requests.
    static constexpr std::size_t kMaxOpenBlocks = 512;

    /// @param host        borrowed for the assembler's life
    /// @param openBlocks  that may be open at once, at most kMaxOpenBlocks
    explicit BlockAssembler(AssemblerHost& host, std::size_t openBlocks = kMaxOpenBlocks)
        : mHost(host), mSlots(openBlocks)
    {
    }

    void setSettings(const StreamSettings& settings);

    /// @param header  of an accepted packet, block id not 0
    /// @param body    what follows the header
    void onPacket(const wire::GvspHeader& header, wire::ByteView body, Time now);
    /// Applies time limits and asks for resends. To be called after packets, and at nextTime().
    void onTime(Time now);
    /// When onTime() has something to do if no packet comes before; none: never.
    std::optional<Time> nextTime();

    /// Packets that the newest open block still has to get behind those received; 0: none is open,
    /// or its length is not known.
    std::uint32_t packetsToCome() const;

    /// Completes the open blocks as Aborted. What may still come of them is late.
    void abort();

    const StreamStatistics& statistics() const { return mStatistics; }
    /// Where in the blocks packets got lost, of those that came again and of failed blocks.
    const log::LostByTenth& lost() const { return mTally.lost(); }
    /// Bytes per data packet of the latest blocks; 0: not known.
    std::size_t dataSize() const { return mHint.dataSize; }
    /// For packets that do not get as far as the assembler.
    void countIgnored() { ++mStatistics.packetsIgnored; }

  private:
    struct Slot {
        OpenBlock block;
        ResendPlanner resends;
    };

    Slot* slotFor(const wire::GvspHeader& header, wire::ByteView body, Time now);
    Slot* findOpen(const wire::GvspHeader& header);
    static bool isOtherLeader(const Slot& slot, const wire::GvspHeader& header,
                              wire::ByteView body);
    Slot* open(const wire::GvspHeader& header, Time now);
    void abandonAll();
    void closeSettled();
    bool isSettled(const Slot& slot) const;
    void closeOldest();
    void closeOldest(BlockResult result);
    static BlockResult resultOf(const Slot& slot);

    Placement place(Slot& slot, const wire::GvspHeader& header, wire::ByteView body);
    void count(Placement placement, const wire::GvspHeader& header, std::size_t bytes);
    void onStored(Slot& slot, std::uint32_t packetId, Time now);
    void onErrorPacket(const wire::GvspHeader& header);
    void requestResends(Time now);
    void requestResends(std::size_t index, Time now);
    void wakeResends(const Slot& slot);
    void endResends(Slot& slot);
    std::uint32_t resendBudget() const;
    template <typename Change>
    void changeResends(Slot& slot, Change change);
    void limitFirstPacketWait(Time now);
    std::optional<Time> limitOf(const OpenBlock& block) const;
    std::optional<Time> firstPacketLimit();

    Slot& slot(std::size_t age) { return mSlots[(mOldest + age) % mSlots.size()]; }
    const Slot& slot(std::size_t age) const { return mSlots[(mOldest + age) % mSlots.size()]; }
    std::size_t indexOf(const Slot& slot) const
    {
        return static_cast<std::size_t>(&slot - mSlots.data());
    }

    AssemblerHost& mHost;
    StreamSettings mSettings;
    StreamStatistics mStatistics;
    LossTally mTally;
    std::vector<Slot> mSlots;
    std::size_t mOldest = 0;    // index of the oldest open block
    std::size_t mOpenCount = 0; // open blocks, in order of their ids
    BlockSequence mSequence;
    Time mWaitingFrom; // when a buffer was last given back for want of packets
    BlockHint mHint;
    ResendTurns<kMaxOpenBlocks> mTurns;
    std::uint32_t mPendingResends = 0; // of all open blocks
    std::vector<PacketRange> mRanges;  // reused
};

} // namespace gige::stream

#endif
