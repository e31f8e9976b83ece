#ifndef TELVO_TOOLS_TELVO_CAMERASEARCH_H
#define TELVO_TOOLS_TELVO_CAMERASEARCH_H

#include "Discovery.h"

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace telvo
{

/// Where to look for cameras, and for how long.
struct SearchOptions {
    std::string interfaceName; // name or IPv4 address; empty: every interface that is up
    std::uint32_t timeout =
        static_cast<std::uint32_t>(gige::control::kDiscoveryTime.count()); // milliseconds
};

using Interfaces = std::vector<gige::net::NetworkInterface>;

/// Those of this name or with this address. Throws UsageError if there is none.
Interfaces selectInterfaces(const Interfaces& all, const std::string& nameOrAddress);

/// Those on which a camera can be that the user calls so: for a loopback address only loopback.
Interfaces interfacesFor(const Interfaces& all, std::string_view camera);

/// Whether the user's text is this camera's MAC address, IP address, user-defined name or serial
/// number.
bool isCalled(const gige::control::DiscoveredDevice& device, std::string_view camera);

/// All that answer on the interfaces of the options. Throws UsageError for an unknown interface,
/// Cancelled.
std::vector<gige::control::DiscoveredDevice> findCameras(const SearchOptions& options);

/// The camera of this name, or with an empty text the only one. Throws Failure if there is none,
/// UsageError, naming them, if there are several to choose from.
gige::control::DiscoveredDevice findCamera(const SearchOptions& options, const std::string& camera);

} // namespace telvo

#endif
