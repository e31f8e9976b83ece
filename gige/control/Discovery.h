#ifndef TELVO_GIGE_CONTROL_DISCOVERY_H
#define TELVO_GIGE_CONTROL_DISCOVERY_H

#include "DiscoveryAck.h"
#include "MacAddress.h"
#include "NetworkInterface.h"

#include <chrono>
#include <functional>
#include <optional>
#include <stop_token>
#include <vector>

namespace gige::control
{

/// How long devices are listened for. A device may delay its answer by up to a second (0x0950).
inline constexpr std::chrono::milliseconds kDiscoveryTime{1000};
/// How long a lookup listens on loopback before it asks the network: a camera on this machine
/// answers at once, and the network is then left alone.
inline constexpr std::chrono::milliseconds kLoopbackHeadStart{20};

/// A device that answered, and the interface that it was heard on.
struct DiscoveredDevice {
    wire::DiscoveryAck info{};
    net::NetworkInterface interface {
    };

    [[nodiscard]] net::Ipv4Address ip() const { return {info.address}; }
    /// False: it cannot be connected to from this interface before it has got another address.
    [[nodiscard]] bool inSubnet() const { return interface.contains(ip()); }
};

/// Called for each device once, as its answer arrives, on the asking thread.
/// @return false: enough, end the discovery
using DeviceFound = std::function<bool(const DiscoveredDevice&)>;

/// The IPv4 interfaces that are up.
std::vector<net::NetworkInterface> usableInterfaces();

/**
 * Asks for devices on these interfaces, by broadcast, and once more half-way. An interface that
 * cannot be used is passed over.
 * @param stop  ends the discovery early
 * @return all that answered within the time, each MAC once: with the interface heard first, but
 * rather one whose subnet it is in
 */
std::vector<DiscoveredDevice> discover(const std::vector<net::NetworkInterface>& interfaces,
                                       std::chrono::milliseconds time = kDiscoveryTime,
                                       const DeviceFound& found = nullptr,
                                       const std::stop_token& stop = {});

/**
 * Looks for one device, on loopback interfaces first, and returns with its first answer.
 * @return none: it did not answer within the time
 */
std::optional<DiscoveredDevice> findDevice(const wire::MacAddress& mac,
                                           const std::vector<net::NetworkInterface>& interfaces,
                                           std::chrono::milliseconds time = kDiscoveryTime);

} // namespace gige::control

#endif
