#ifndef TELVO_TOOLS_TELVO_CONNECTIONSETTINGS_H
#define TELVO_TOOLS_TELVO_CONNECTIONSETTINGS_H

#include "TelvoDll.h"

namespace telvo
{

/// What the tool connects with: the library's own defaults, but for three. The packet size is
/// negotiated. Lost packets are asked for again, without which a network that loses one in fifty
/// leaves no picture whole. Block requests go over the serial line, which is faster than features.
inline constexpr TelvoConnectionSettings kUsualConnection{
    .useSettings = 1,
    .reserved1 = {},
    .packetSize = 0,
    .defaultInterPacketDelay = 2000,
    .outputInterPacketDelay = 0,
    .firstPacketTimeout = 0,
    .packetTimeout = 1000,
    .requestTimeout = 1100,
    .defaultImageTimeout = 1100,
    .answerTimeout = 1000,
    .heartbeatTimeout = 3000,
    .heartbeatInterval = 1000,
    .maximumPendingResends = 100,
    .fastReadoutActive = 1,
    .reserved2 = {},
    .requestMode = 1,
    .outputDataRate = 3,
    .reserved3 = {},
};

} // namespace telvo

#endif
