#include "Discovery.h"

#include "BroadcastQuery.h"
#include "GvcpHeader.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace gige::control
{

namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::uint16_t kDiscoveryId = 0xFFFF; // the request id of every discovery
/// How often a discovery looks whether it is to end early.
constexpr std::chrono::milliseconds kStopLatency{50};

/// A device's answer, or nothing for whatever else arrives at the socket.
std::optional<DiscoveredDevice> deviceIn(const HeardDatagram& heard)
{
    const auto ack = wire::decodeAck(heard.bytes);
    if (!ack || ack->header.command != wire::GvcpCommand::DiscoveryAck ||
        ack->header.requestId != kDiscoveryId || wire::isError(ack->header.status)) {
        return std::nullopt;
    }
    const auto info = wire::decodeDiscoveryAck(ack->payload);
    if (!info) {
        return std::nullopt;
    }
    return DiscoveredDevice{.info = *info, .interface = heard.interface};
}

/// @return false: the list knew this device as well as that before
bool merge(std::vector<DiscoveredDevice>& devices, const DiscoveredDevice& device)
{
    const auto known = std::ranges::find_if(
        devices, [&](const DiscoveredDevice& one) { return one.info.mac == device.info.mac; });
    if (known == devices.end()) {
        devices.push_back(device);
        return true;
    }
    if (known->inSubnet() || !device.inSubnet()) {
        return false;
    }
    *known = device;
    return true;
}

/// One discovery in progress.
class Search
{
  public:
    explicit Search(const DeviceFound& found, std::stop_token stop = {})
        : mFound(found),
          mStop(std::move(stop)),
          mQuery(wire::commandDatagram(wire::GvcpCommand::Discovery,
                                       wire::kGvcpAckRequired | wire::kGvcpBroadcastAckAllowed,
                                       kDiscoveryId))
    {
    }

    void ask(const std::vector<net::NetworkInterface>& interfaces)
    {
        for (const net::NetworkInterface& interface : interfaces) {
            mQuery.ask(interface);
        }
    }

    /// @return false: enough
    bool collectUntil(Clock::time_point end)
    {
        while (!mStop.stop_requested()) {
            const auto now = Clock::now();
            const auto heard = mQuery.next(std::min(end, now + kStopLatency));
            if (!heard && now >= end) {
                return true;
            }
            const auto device = heard ? deviceIn(*heard) : std::nullopt;
            if (device && merge(mDevices, *device) && mFound && !mFound(*device)) {
                return false;
            }
        }
        return false;
    }

    /// Asks again half-way.
    void collectBetween(Clock::time_point start, Clock::time_point end)
    {
        if (collectUntil(start + (end - start) / 2)) {
            mQuery.repeat();
            collectUntil(end);
        }
    }

    [[nodiscard]] const std::vector<DiscoveredDevice>& devices() const { return mDevices; }

  private:
    const DeviceFound& mFound;
    std::stop_token mStop;
    BroadcastQuery mQuery;
    std::vector<DiscoveredDevice> mDevices;
};

} // namespace

std::vector<net::NetworkInterface> usableInterfaces()
{
    std::vector<net::NetworkInterface> interfaces = net::networkInterfaces();
    std::erase_if(interfaces, [](const net::NetworkInterface& one) { return !one.isUp; });
    return interfaces;
}

std::vector<DiscoveredDevice> discover(const std::vector<net::NetworkInterface>& interfaces,
                                       std::chrono::milliseconds time, const DeviceFound& found,
                                       const std::stop_token& stop)
{
    const auto start = Clock::now();
    Search search(found, stop);
    search.ask(interfaces);
    search.collectBetween(start, start + time);
    return search.devices();
}

std::optional<DiscoveredDevice> findDevice(const wire::MacAddress& mac,
                                           const std::vector<net::NetworkInterface>& interfaces,
                                           std::chrono::milliseconds time)
{
    std::optional<DiscoveredDevice> match;
    const DeviceFound found = [&](const DiscoveredDevice& device) {
        if (device.info.mac == mac) {
            match = device;
        }
        return !match || !match->inSubnet(); // an interface in its subnet may hear it too
    };
    std::vector<net::NetworkInterface> loopback;
    std::vector<net::NetworkInterface> network;
    std::ranges::partition_copy(interfaces, std::back_inserter(loopback),
                                std::back_inserter(network), &net::NetworkInterface::isLoopback);

    const auto start = Clock::now();
    Search search(found);
    search.ask(loopback);
    if (loopback.empty() || search.collectUntil(start + std::min(kLoopbackHeadStart, time))) {
        search.ask(network);
        search.collectBetween(start, start + time);
    }
    return match;
}

} // namespace gige::control
