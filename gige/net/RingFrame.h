/// Linux only: what lies in one frame of the packet ring.
#ifndef TELVO_GIGE_NET_RINGFRAME_H
#define TELVO_GIGE_NET_RINGFRAME_H

#include "DatagramRun.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace gige::net
{

/// Room that a frame needs beside the IP datagram, bytes: the ring's own headers, the link's header
/// and what a short packet is padded with.
std::size_t frameOverhead();

/// The UDP datagrams in a filled frame. None when they are not as the protocols demand, so that the
/// socket would not deliver them either: cut, of wrong length, or with a wrong checksum.
std::optional<DatagramRun> decodeFrame(std::span<const std::uint8_t> frame);

/// The same of an IP datagram as it came.
/// @param isVerified  the kernel vouches for the UDP checksum
/// @param segment     bytes of each of the joined UDP datagrams; 0: it is one
std::optional<DatagramRun> decodeUdp(std::span<const std::uint8_t> ip, bool isVerified,
                                     std::size_t segment);

} // namespace gige::net

#endif
