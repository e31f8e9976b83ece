#include "Discovery.h"

#include "BroadcastQuery.h"
#include "GvcpHeader.h"
#include "Reasons.h"
#include "StackLog.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace gige::control
{

namespace
{

/// How often a discovery looks whether it is to end early.
constexpr std::chrono::milliseconds kStopLatency{50};

/// One discovery in progress. It ends on time, whatever arrives.
class Search
{
  public:
    using Take = std::function<void(const DiscoveredDevice&)>;

    /// @param take  gets every answer
    explicit Search(Take take, Clock& clock, std::stop_token stop = {})
        : mClock(clock),
          mTake(std::move(take)),
          mStop(std::move(stop)),
          mQuery(wire::commandDatagram(wire::GvcpCommand::Discovery,
                                       wire::kGvcpAckRequired | wire::kGvcpBroadcastAckAllowed,
                                       kDiscoveryId),
                 clock)
    {
    }

    void ask(const std::vector<net::NetworkInterface>& interfaces)
    {
        for (const net::NetworkInterface& interface : interfaces) {
            mQuery.ask(interface);
        }
    }

    /// No answer is taken from this time on.
    void endBy(Clock::TimePoint time) { mEnd = std::min(mEnd, time); }

    [[nodiscard]] bool isEnding() const { return mEnd != Clock::TimePoint::max(); }

    /// @return false: the search has ended
    bool collectUntil(Clock::TimePoint time)
    {
        for (;;) {
            const auto now = mClock.now();
            if (mStop.stop_requested() || now >= mEnd) {
                return false;
            }
            if (now >= time) {
                return true;
            }
            const auto heard = mQuery.next(std::min({time, mEnd, now + kStopLatency}));
            if (const auto device = heard ? discoveredIn(*heard) : std::nullopt) {
                mTake(*device);
            }
        }
    }

    /// Asks again half-way.
    void collectBetween(Clock::TimePoint start, Clock::TimePoint end)
    {
        if (collectUntil(start + (end - start) / 2)) {
            mQuery.repeat();
            collectUntil(end);
        }
    }

  private:
    Clock& mClock;
    Take mTake;
    std::stop_token mStop;
    BroadcastQuery mQuery;
    Clock::TimePoint mEnd = Clock::TimePoint::max();
};

/// @param camera  that was looked for; empty: any
void saySilence(std::string_view camera, const std::vector<net::NetworkInterface>& interfaces)
{
    log::say(camera,
             interfaces.empty() ? log::noInterface() : log::noAnswer(listOf(interfaces).view()));
}

/// Why a device that answered cannot be connected to, if so.
void sayObstacle(const DiscoveredDevice& device)
{
    const std::string ip = net::toText(device.ip());
    if (device.hasRival) {
        log::say(ip, log::rivalAddresses());
    } else if (!device.inSubnet()) {
        log::say("", log::notInSubnet(ip, device.nic.name));
    }
}

} // namespace

log::Line listOf(const std::vector<net::NetworkInterface>& interfaces)
{
    log::Line list;
    for (const net::NetworkInterface& each : interfaces) {
        list << (list.empty() ? "" : ", ") << each.name << " (" << net::toText(each.address) << ")";
    }
    return list;
}

std::vector<net::NetworkInterface> usableInterfaces()
{
    std::vector<net::NetworkInterface> interfaces = net::networkInterfaces();
    std::erase_if(interfaces, [](const net::NetworkInterface& one) { return !one.isUp; });
    return interfaces;
}

std::vector<DiscoveredDevice> discover(const std::vector<net::NetworkInterface>& interfaces,
                                       std::chrono::milliseconds time, const DeviceFound& found,
                                       const std::stop_token& stop, Clock& clock)
{
    const auto start = clock.now();
    DiscoveryList list;
    Search search(
        [&](const DiscoveredDevice& answer) {
            const DiscoveredDevice* const news = list.add(answer);
            if (news != nullptr && found && !found(*news)) {
                search.endBy(clock.now());
            }
        },
        clock, stop);
    search.ask(interfaces);
    search.collectBetween(start, start + time);
    std::ranges::for_each(list.devices(), sayObstacle);
    if (list.devices().empty() && !stop.stop_requested()) {
        saySilence("", interfaces);
    }
    return list.devices();
}

std::optional<DiscoveredDevice> findDevice(const wire::MacAddress& mac,
                                           const std::vector<net::NetworkInterface>& interfaces,
                                           std::chrono::milliseconds time,
                                           std::chrono::milliseconds rivalTime, Clock& clock)
{
    DiscoveryList list; // of this one MAC, so that no others fill it
    Search search(
        [&](const DiscoveredDevice& answer) {
            const auto* const news = answer.info.mac == mac ? list.add(answer) : nullptr;
            if (news != nullptr && (news->hasRival || news->inSubnet())) {
                // Not in its subnet: an interface that is may hear it, too.
                search.endBy(clock.now() +
                             (news->hasRival ? std::chrono::milliseconds(0) : rivalTime));
            }
        },
        clock);
    std::vector<net::NetworkInterface> loopback;
    std::vector<net::NetworkInterface> network;
    std::ranges::partition_copy(interfaces, std::back_inserter(loopback),
                                std::back_inserter(network), &net::NetworkInterface::isLoopback);

    const auto start = clock.now();
    search.ask(loopback);
    if (!loopback.empty()) {
        search.collectUntil(start + std::min(kLoopbackHeadStart, time));
    }
    if (!search.isEnding()) {
        search.ask(network);
    }
    search.collectBetween(start, start + time);
    if (list.devices().empty()) {
        saySilence(wire::toText(mac), interfaces);
    } else {
        sayObstacle(list.devices().front());
    }
    const bool isFound = !list.devices().empty() && !list.devices().front().hasRival;
    return isFound ? std::optional(list.devices().front()) : std::nullopt;
}

} // namespace gige::control
