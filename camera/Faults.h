#ifndef TELVO_CAMERA_FAULTS_H
#define TELVO_CAMERA_FAULTS_H

#include "FeatureTable.h"
#include "GvcpStatus.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <random>
#include <set>
#include <vector>

namespace camera
{

inline constexpr std::uint32_t kForever = 0xFFFFFFFF; ///< a count that never ends

/// Chance of each fault for every stream packet, 0.0 to 1.0.
struct PacketRates {
    double lose = 0;
    double repeat = 0;
    double reorder = 0; ///< the packet comes up to four places later
    double delay = 0;   ///< the stream pauses before the packet
    std::chrono::microseconds pause{2000};
    bool operator==(const PacketRates&) const = default;
};

enum class PacketFaultKind : std::uint8_t { Lose, Repeat, Reorder, Delay };

/// A fault of one packet in each of the next blocks.
struct PacketFault {
    PacketFaultKind kind = PacketFaultKind::Lose;
    std::uint32_t packetId = 1; ///< 0 leader, 1..N data, N + 1 trailer
    std::uint32_t blocks = 1;   ///< how many blocks
    std::chrono::microseconds pause{2000};
};

enum class FrameFaultKind : std::uint8_t {
    Lose,        ///< the block is not sent, its id stays unused
    Repeat,      ///< the frame is sent again, in a block of its own
    Reorder,     ///< the frame is sent behind the next one, if one follows at once
    JumpCounter, ///< the header's frame number is greater by `amount` in this frame only
    StopMiddle,  ///< the block ends after `amount` packets, without a trailer
    Silence,     ///< as StopMiddle, then the stream rests for `pause`
};

/// A fault of a whole frame.
struct FrameFault {
    FrameFaultKind kind = FrameFaultKind::Lose;
    std::uint32_t position = 0; ///< place in a requested range, from 0; live: frame number
    std::uint32_t amount = 1;
    std::chrono::milliseconds pause{0};
    std::uint32_t times = 1; ///< how often
};

enum class AccessFaultKind : std::uint8_t {
    Reject,    ///< answered with `status`, nothing is done
    Delay,     ///< executed after `delay`; PENDING_ACK goes out if the host enabled it
    Corrupt,   ///< a read yields `value`
    DropAck,   ///< executed, but not answered
    DoubleAck, ///< answered twice
    LateAck,   ///< executed at once, answered after `delay`
};
enum class AccessKind : std::uint8_t { Read, Write, Any };

/// A fault of register accesses to one feature.
struct AccessFault {
    FeatureId feature{};
    AccessKind access = AccessKind::Any;
    AccessFaultKind kind = AccessFaultKind::Reject;
    gige::wire::GvcpStatus status = gige::wire::GvcpStatus::AccessDenied;
    std::chrono::milliseconds delay{0};
    std::uint32_t value = 0;
    std::uint32_t times = 1; ///< how many accesses
    std::uint32_t after = 0; ///< accesses that are let through first
};

/// What happens to one packet of a block, in sending order.
struct PacketStep {
    std::uint32_t packetId = 0;
    std::chrono::microseconds pauseBefore{0};
};

/// Everything that can go wrong, to be switched on and off while the camera runs. Thread-safe. The
/// pseudo-random choices are the same in every run.
class Faults
{
  public:
    void setPacketRates(const PacketRates& rates);
    void add(const PacketFault& fault);
    void add(const FrameFault& fault);
    void add(const AccessFault& fault);
    /// Loses this share of whole frames, 0.0 to 1.0.
    void setFrameLoss(double rate);

    /// Deaf and dumb: no answer, no packet, until it is switched off again.
    void setSilent(bool silent) { mSilent = silent; }
    void setAvailable(FeatureId feature, bool available);
    /// The serial line takes at most so many bytes of one write.
    void limitSerial(std::uint32_t bytes) { mSerialLimit = bytes; }
    /// Packet sizes above are cut to this.
    void clampPacketSize(std::uint32_t bytes) { mPacketSizeLimit = bytes; }
    void ignoreTestPackets(bool ignore) { mIgnoreTestPackets = ignore; }
    /// "StreamStartNumber" may never be above "StreamEndNumber", not even between two writes.
    void requireOrderedRange(bool require) { mOrderedRange = require; }
    void clear();

    // What the camera asks.
    [[nodiscard]] bool isSilent() const { return mSilent; }
    [[nodiscard]] bool isAvailable(FeatureId feature) const;
    [[nodiscard]] std::uint32_t serialLimit() const { return mSerialLimit; }
    [[nodiscard]] std::uint32_t packetSizeLimit() const { return mPacketSizeLimit; }
    [[nodiscard]] bool ignoresTestPackets() const { return mIgnoreTestPackets; }
    [[nodiscard]] bool requiresOrderedRange() const { return mOrderedRange; }
    /// The fault of this access, if any; it is used up.
    [[nodiscard]] std::optional<AccessFault> onAccess(FeatureId feature, bool write);
    [[nodiscard]] std::optional<FrameFault> onFrame(std::uint32_t position);
    /// True while some packet may go wrong: else packetSteps() need not be asked.
    [[nodiscard]] bool disturbsPackets() const { return mDisturbsPackets; }
    /// The order in which a block's packets 0..lastPacket go out; a lost packet is not in it.
    void packetSteps(std::uint32_t lastPacket, std::vector<PacketStep>& steps);
    /// True when a resent packet gets lost too.
    [[nodiscard]] bool losesResend();

  private:
    void updateDisturbance();
    [[nodiscard]] bool happens(double rate);
    [[nodiscard]] std::optional<PacketFault> faultOf(std::uint32_t packetId) const;
    void reorder(std::vector<PacketStep>& steps);

    std::atomic<bool> mSilent{false};
    std::atomic<bool> mIgnoreTestPackets{false};
    std::atomic<bool> mOrderedRange{false};
    std::atomic<bool> mDisturbsPackets{false};
    std::atomic<std::uint32_t> mSerialLimit{kForever};
    std::atomic<std::uint32_t> mPacketSizeLimit{kForever};

    mutable std::mutex mLock; // guards all below
    PacketRates mRates;
    double mFrameLoss = 0;
    std::vector<PacketFault> mPacketFaults;
    std::vector<FrameFault> mFrameFaults;
    std::vector<AccessFault> mAccessFaults;
    std::set<FeatureId> mUnavailable;
    std::vector<std::uint32_t> mReordered; // packets of the block at hand that come later
    std::minstd_rand mRandom{1};
};

} // namespace camera

#endif
