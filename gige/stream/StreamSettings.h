#ifndef TELVO_GIGE_STREAM_STREAMSETTINGS_H
#define TELVO_GIGE_STREAM_STREAMSETTINGS_H

#include <chrono>
#include <cstdint>

namespace gige::stream
{

/// The stack's one clock: it never steps back.
using Clock = std::chrono::steady_clock;
using Time = Clock::time_point;

/// Limits of block assembly. A time of 0 means: no limit.
struct StreamSettings {
    /// "FirstPacketTimeout": longest wait of a queued buffer for a block's first packet.
    std::chrono::milliseconds firstPacketTimeout{0};
    /// "PacketTimeout": longest gap between two packets of one block.
    std::chrono::milliseconds packetTimeout{1000};
    /// "DefaultImageTimeout": longest time from a block's first packet to its completion.
    std::chrono::milliseconds imageTimeout{1100};
    /// "MaximumPendingResends": packets that may be under re-request at once; 0: no resends.
    std::uint32_t maximumPendingResends = 0;
    /// "MaximumResendRequestRetryByPacket": requests per packet.
    std::uint32_t maximumRequestsPerPacket = 3;
};

/// Packets come in disorder for this long before a gap counts as a loss.
constexpr std::chrono::milliseconds kReorderTime{1};
/// Pause before the same packet is asked for again; four times as long with every further request.
constexpr std::chrono::milliseconds kResendPause{5};
/// A block whose end is missing counts as cut off after this long without packets.
constexpr std::chrono::milliseconds kTailTime{20};

/// Block ids this far behind the newest are late packets; further behind, the device has restarted.
constexpr int kLateBlocks = 100;
/// After so long without packets none is on its way any more: an old id is a restart.
constexpr std::chrono::milliseconds kRestartSilence{100};

} // namespace gige::stream

#endif
