#include "DeviceAddress.h"

#include "BootstrapRegisters.h"
#include "ControlChannel.h"
#include "DeviceRegisters.h"
#include "LinkSettings.h"
#include "Reasons.h"
#include "StackLog.h"

#include <algorithm>

namespace gige::control
{

namespace
{

constexpr std::uint32_t kProbeTimeout = 300; // milliseconds
constexpr std::uint32_t kProbeRetries = 1;

/// Whether anything at the address answers a register access from this interface.
bool answers(const DeviceAddress& address)
{
    LinkSettings settings;
    settings.answerTimeout = kProbeTimeout;
    settings.commandRetryCount = kProbeRetries;
    const auto channel = ControlChannel::open(address.nic.address, address.ip, settings);
    if (!channel) {
        return false;
    }
    const auto value = DeviceRegisters(*channel).readRegister(wire::kRegStreamChannelCount);
    return value || isDeviceError(value.status());
}

} // namespace

std::optional<DeviceAddress> locateDevice(net::Ipv4Address ip,
                                          const std::vector<net::NetworkInterface>& interfaces)
{
    std::vector<DeviceAddress> candidates;
    for (const net::NetworkInterface& interface : interfaces) {
        if (interface.contains(ip)) {
            candidates.push_back({.ip = ip, .nic = interface});
        }
    }
    if (candidates.size() == 1) {
        return candidates.front();
    }
    if (candidates.empty()) { // behind a router
        const auto interface = net::interfaceReaching(ip);
        if (!interface) {
            log::say("", log::notInSubnet(net::toText(ip), "any interface"));
        }
        return interface ? std::optional(DeviceAddress{ip, *interface}) : std::nullopt;
    }
    const auto found = std::ranges::find_if(candidates, answers);
    if (found == candidates.end()) {
        log::say(net::toText(ip), log::noAnswer("any of several interfaces"));
    }
    return found == candidates.end() ? std::nullopt : std::optional(*found);
}

} // namespace gige::control
