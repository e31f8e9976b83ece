#ifndef TELVO_TESTS_GIGE_CONTROL_CONTROLFIXTURE_H
#define TELVO_TESTS_GIGE_CONTROL_CONTROLFIXTURE_H

#include "ControlChannel.h"
#include "FakeDevice.h"
#include "LinkSettings.h"
#include "NetworkInterface.h"

#include <chrono>
#include <memory>
#include <string>

namespace gige::control
{

inline constexpr net::Ipv4Address kHost{0x7F000001};

/// The loopback interface as the system describes it.
inline net::NetworkInterface loopback()
{
    return {.name = "lo",
            .address = kHost,
            .netmask = {0xFF000000},
            .mtu = 65536,
            .isLoopback = true,
            .isUp = true};
}

/// Milliseconds since an instant.
inline std::int64_t elapsed(std::chrono::steady_clock::time_point since)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                 since)
        .count();
}

} // namespace gige::control

#endif
