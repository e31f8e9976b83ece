#ifndef TELVO_GIGE_CONTROL_DEVICEADDRESS_H
#define TELVO_GIGE_CONTROL_DEVICEADDRESS_H

#include "NetworkInterface.h"

#include <optional>
#include <vector>

namespace gige::control
{

/// Where a device is: its address, and the interface of ours that leads to it.
struct DeviceAddress {
    net::Ipv4Address ip{};
    net::NetworkInterface nic{};
};

/// Chooses the interface that leads to an address. Where the address lies in the subnets of
/// several, the device is asked, and the first interface taken on which it answers; otherwise
/// nothing is sent, and nothing is said of whether there is a device.
/// @param interfaces  those that are up
/// @return none: no interface leads there, or none of several brought an answer
std::optional<DeviceAddress> locateDevice(net::Ipv4Address ip,
                                          const std::vector<net::NetworkInterface>& interfaces);

} // namespace gige::control

#endif
