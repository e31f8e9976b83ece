#ifndef TELVO_GIGE_CONTROL_PACKETSIZENEGOTIATION_H
#define TELVO_GIGE_CONTROL_PACKETSIZENEGOTIATION_H

#include "ControlStatus.h"
#include "StreamChannel.h"

#include <chrono>
#include <cstdint>
#include <functional>

namespace gige::control
{

/// Largest packet tried on a loopback interface, bytes: its MTU of 65536 says nothing.
inline constexpr std::uint32_t kLoopbackPacketSizeCap = 9000;
/// Smallest packet tried, bytes: what every IPv4 host must take.
inline constexpr std::uint32_t kSmallestPacketSize = 576;
/// The packet size field of SCPS has 16 bits.
inline constexpr std::uint32_t kLargestPacketSize = 0xFFFF;

/// Packet sizes count the whole IP datagram: headers of IP, UDP and GVSP included.
struct PacketSizeLimits {
    std::uint32_t interfaceMtu = 1500;
    bool loopback = false;
    /// From the feature GevSCPSPacketSize, where the device has it.
    std::uint32_t minimum = kSmallestPacketSize;
    std::uint32_t maximum = kLargestPacketSize;
    std::uint32_t increment = 4;
};

/// Waits for one datagram at the stream's socket.
/// @param udpPayload  its length in bytes, IP and UDP headers not counted; others are to be dropped
/// @return true: it came within the time
using TestPacketWait =
    std::function<bool(std::uint32_t udpPayload, std::chrono::milliseconds timeout)>;

/// Finds the largest packet that travels from the device to the host in one piece, and sets it. The
/// stream's destination must be set, with a socket that `wait` listens to. Blocks for a few
/// packets' time, or about two seconds where large packets are lost on the way.
/// @param defaultSize  bytes; set when the device sends no test packet and has no size of its own
/// @return the size that the device has in the end, read back
Result<std::uint32_t> negotiatePacketSize(StreamChannel& channel, const PacketSizeLimits& limits,
                                          std::uint32_t defaultSize, const TestPacketWait& wait);

} // namespace gige::control

#endif
