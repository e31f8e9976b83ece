#ifndef TELVO_GIGE_CONTROL_DISCOVERYLIST_H
#define TELVO_GIGE_CONTROL_DISCOVERYLIST_H

#include "BroadcastQuery.h"
#include "DiscoveryAck.h"
#include "MacAddress.h"
#include "NetworkInterface.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace gige::control
{

/// The request id of every discovery.
inline constexpr std::uint16_t kDiscoveryId = 0xFFFF;
/// Devices that one discovery lists, at most: anybody on the network can invent more.
inline constexpr std::size_t kMostDevices = 1024;

/// A device that answered, and the interface that it was heard on.
struct DiscoveredDevice {
    wire::DiscoveryAck info{};
    net::NetworkInterface nic{};
    /// Another address claims the same MAC address. Which of the two is meant cannot be told, so
    /// that neither is to be connected to.
    bool hasRival = false;

    [[nodiscard]] net::Ipv4Address ip() const { return {info.address}; }
    /// False: it cannot be connected to from this interface before it has got another address.
    [[nodiscard]] bool inSubnet() const { return nic.contains(ip()); }
};

/// A device's answer to a discovery; none for whatever else arrives at the socket. An answer counts
/// only when it comes from the address that it names: so nobody can send a host elsewhere in
/// another device's name.
std::optional<DiscoveredDevice> discoveredIn(const HeardDatagram& heard);

/// The devices of one discovery, each MAC once, in order of their first answers.
class DiscoveryList
{
  public:
    /// @return what is known of the device now; null: nothing new, or the list is full
    const DiscoveredDevice* add(const DiscoveredDevice& device);

    [[nodiscard]] const std::vector<DiscoveredDevice>& devices() const { return mDevices; }

  private:
    std::vector<DiscoveredDevice> mDevices;
    std::map<wire::MacAddress, std::size_t> mPlaces; // in mDevices
};

} // namespace gige::control

#endif
