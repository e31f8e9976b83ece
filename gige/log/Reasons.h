/// What is told of the reasons why pictures do not come, and what to do: each sentence stands here
/// once, for the stack's log and for tools that look for the reasons.
#ifndef TELVO_GIGE_LOG_REASONS_H
#define TELVO_GIGE_LOG_REASONS_H

#include "Reason.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace gige::log
{

// Finding a camera.
Reason noInterface();
/// @param interfaces  "eth0 (10.0.0.1), …"
Reason noAnswer(std::string_view interfaces);
Reason rivalAddresses();
Reason notInSubnet(std::string_view address, std::string_view interface);

// Control.
/// @param host  "10.0.0.1, port 50123"; empty: the camera does not tell
Reason controlledBy(std::string_view host);
Reason heartbeatUnanswered();
/// @param milliseconds  that the camera has been silent for
Reason linkSilent(std::int64_t milliseconds);
/// @param host  as for controlledBy()
Reason controlTaken(std::string_view host);
Reason controlEnded();
Reason linkClosed();

// The way of the packets.
inline constexpr std::uint32_t kJumboPacket = 9000; // bytes
/// @param size, mtu  bytes; the latter the interface's
Reason smallPackets(std::int64_t size, std::uint32_t mtu);
/// @param size  bytes that packets have all the same
Reason noTestPacket(std::uint32_t size);
Reason smallBuffer(std::size_t granted, std::size_t asked);
/// @param error  the system's number for it
Reason noStream(int error);
Reason noPackets();
/// The camera sends, for certain.
Reason noPacketOfPictures();

// Pictures.
/// Packets that got lost by their place in the picture, in tenths of it.
using LostByTenth = std::array<std::int64_t, 10>;
std::int64_t sumOf(const LostByTenth& lost);
/// So few tell nothing of a place.
inline constexpr std::int64_t kFewLosses = 5;
/// "most of them at the start of a picture", and what to do.
Reason lossPlace(const LostByTenth& lost);
Reason incompletePictures(std::int64_t pictures, std::int64_t packets);
Reason lostAndCame(std::int64_t packets);
Reason noBuffer(std::int64_t pictures);
Reason longPictures(std::int64_t pictures);
Reason noResends();

// The computer.
inline constexpr double kFullCore = 0.9; // to which little more than this is left of a core
/// "97 %"
Line percent(double share);
/// "receiving took 97 % of a core"
Line receivingTook(double load);
/// What makes receiving less work.
/// @param packetSize  bytes
Line lessWork(std::int64_t packetSize, bool isRingInUse);
Reason slowProcessor(double load, std::int64_t packetSize, bool isRingInUse);
Reason ringTaken();
Reason ringGivenUp();

} // namespace gige::log

#endif
