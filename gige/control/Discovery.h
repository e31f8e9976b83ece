#ifndef TELVO_GIGE_CONTROL_DISCOVERY_H
#define TELVO_GIGE_CONTROL_DISCOVERY_H

#include "Clock.h"
#include "DiscoveryList.h"
#include "Line.h"
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
/// How long a lookup goes on listening after the device's answer, for another that claims its MAC.
inline constexpr std::chrono::milliseconds kRivalTime{20};

/// Called for each device, as its answer arrives, on the asking thread; once more when there is
/// news of it: a rival, or an interface that reaches it.
/// @return false: enough, end the discovery
using DeviceFound = std::function<bool(const DiscoveredDevice&)>;

/// The IPv4 interfaces that are up.
std::vector<net::NetworkInterface> usableInterfaces();
/// "eth0 (10.0.0.1), …"
log::Line listOf(const std::vector<net::NetworkInterface>& interfaces);

/// Asks for devices on these interfaces, by broadcast, and once more half-way. An interface that
/// cannot be used is passed over.
/// @param stop  ends the discovery early
/// @return all that answered within the time, each MAC once: with the interface heard first, but
/// rather one whose subnet it is in; at most kMostDevices, and no later than that whatever arrives
std::vector<DiscoveredDevice> discover(const std::vector<net::NetworkInterface>& interfaces,
                                       std::chrono::milliseconds time = kDiscoveryTime,
                                       const DeviceFound& found = nullptr,
                                       const std::stop_token& stop = {},
                                       Clock& clock = systemClock());

/// Looks for one device, on loopback interfaces first, and returns soon after its first answer.
/// @param rivalTime  how long it listens after that answer
/// @return none: it did not answer within the time, or two addresses claim its MAC
std::optional<DiscoveredDevice> findDevice(const wire::MacAddress& mac,
                                           const std::vector<net::NetworkInterface>& interfaces,
                                           std::chrono::milliseconds time = kDiscoveryTime,
                                           std::chrono::milliseconds rivalTime = kRivalTime,
                                           Clock& clock = systemClock());

} // namespace gige::control

#endif
