#ifndef TELVO_GIGE_NET_NETWORKINTERFACE_H
#define TELVO_GIGE_NET_NETWORKINTERFACE_H

#include "Ipv4Address.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace gige::net
{

/// One IPv4 address of one network interface.
struct NetworkInterface {
    std::string name{};
    Ipv4Address address{};
    Ipv4Address netmask{};
    std::uint32_t mtu = 0; // bytes of the largest IP datagram
    bool isLoopback = false;
    bool isUp = false;

    /// Computed, since the system's own value is not always right.
    Ipv4Address broadcast() const { return {address.value | ~netmask.value}; }
    /// Whether the address lies in this interface's subnet.
    bool contains(Ipv4Address other) const
    {
        return ((address.value ^ other.value) & netmask.value) == 0;
    }
};

/// Every IPv4 address of every interface, up or not; empty when the system refuses to tell.
std::vector<NetworkInterface> networkInterfaces();

/// The interface through which the system would send to this address. Sends nothing.
std::optional<NetworkInterface> interfaceReaching(Ipv4Address destination);

} // namespace gige::net

#endif
