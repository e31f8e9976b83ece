#ifndef TELVO_BENCH_HOSTSETTINGS_H
#define TELVO_BENCH_HOSTSETTINGS_H

#include "TelvoDll.h"

#include <cstdint>

/// A host's usual settings: no delays, requests for recorded frames over the serial line.
/// @param packetSize  bytes of a stream packet
inline TelvoConnectionSettings hostSettings(std::uint32_t packetSize)
{
    TelvoConnectionSettings settings{};
    settings.useSettings = 1;
    settings.packetSize = packetSize;
    settings.requestTimeout = 1100;
    settings.packetTimeout = 1000;
    settings.defaultImageTimeout = 1100;
    settings.answerTimeout = 1000;
    settings.heartbeatTimeout = 3000;
    settings.heartbeatInterval = 1000;
    settings.requestMode = 1;
    return settings;
}

#endif
