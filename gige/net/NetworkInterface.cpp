#include "NetworkInterface.h"

#include "UdpSocket.h"

#include <algorithm>

namespace gige::net
{

std::optional<NetworkInterface> interfaceReaching(Ipv4Address destination)
{
    const auto source = sourceAddressTowards(destination);
    if (!source) {
        return std::nullopt;
    }
    const auto interfaces = networkInterfaces();
    auto found = std::ranges::find(interfaces, *source, &NetworkInterface::address);
    if (found == interfaces.end()) {
        // All of 127.0.0.0/8 is local, so the source need not be an address of an interface.
        found = std::ranges::find_if(interfaces, [&](const NetworkInterface& candidate) {
            return candidate.isUp && candidate.contains(*source);
        });
    }
    return found == interfaces.end() ? std::nullopt : std::optional(*found);
}

} // namespace gige::net
