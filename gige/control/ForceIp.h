#ifndef TELVO_GIGE_CONTROL_FORCEIP_H
#define TELVO_GIGE_CONTROL_FORCEIP_H

#include "ControlStatus.h"
#include "Discovery.h"
#include "GvcpPayloads.h"
#include "NetworkInterface.h"

#include <chrono>
#include <vector>

namespace gige::control
{

/// How long a device is waited for under its new address: it may restart its network.
inline constexpr std::chrono::milliseconds kForceIpTime{3000};

/// Gives a device an IP address until its power-off (FORCEIP), and waits until it answers discovery
/// under it. Sent on the interface where the device is heard, or on all if it is not. A device that
/// holds the address already counts as done, whatever it makes of the command.
/// @param request     address 0: the device shall look for an address itself; any answer will do
/// then
/// @param interfaces  where to look
/// @return Ok; an error of the device, such as AccessDenied when a host controls it; Timeout: it
/// does not answer, or not under the address
Status forceIp(const wire::ForceIp& request, const std::vector<net::NetworkInterface>& interfaces,
               std::chrono::milliseconds time = kForceIpTime, Clock& clock = systemClock());

} // namespace gige::control

#endif
