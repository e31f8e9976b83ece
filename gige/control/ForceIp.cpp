#include "ForceIp.h"

#include "BroadcastQuery.h"
#include "GvcpHeader.h"

#include <algorithm>
#include <optional>

namespace gige::control
{

namespace
{

constexpr std::uint16_t kForceIpId = 0xFFFE; // the request id of every FORCEIP
/// Longest look for the device, and the pause before the next, while it takes its address.
constexpr std::chrono::milliseconds kLookTime{500};
constexpr std::chrono::milliseconds kLookPause{100};

/// @param before  where the device was heard, if it was: nobody else refuses for it
std::optional<Status> refusalIn(const std::optional<HeardDatagram>& heard,
                                const std::optional<DiscoveredDevice>& before)
{
    const auto ack = heard ? wire::decodeAck(heard->bytes) : std::nullopt;
    const bool isForeign = heard && before && heard->source.address != before->ip();
    if (isForeign || !ack || ack->header.command != wire::GvcpCommand::ForceIpAck ||
        ack->header.requestId != kForceIpId || !wire::isError(ack->header.status)) {
        return std::nullopt;
    }
    return deviceError(ack->header.status);
}

} // namespace

Status forceIp(const wire::ForceIp& request, const std::vector<net::NetworkInterface>& interfaces,
               std::chrono::milliseconds time, Clock& clock)
{
    const auto before = findDevice(request.mac, interfaces, kDiscoveryTime, kRivalTime, clock);
    const std::vector<net::NetworkInterface> reaching =
        before ? std::vector{before->nic} : interfaces;

    BroadcastQuery query(
        wire::commandDatagram(wire::GvcpCommand::ForceIp,
                              wire::kGvcpAckRequired | wire::kGvcpBroadcastAckAllowed, kForceIpId,
                              encode(request)),
        clock);
    for (const net::NetworkInterface& interface : reaching) {
        query.ask(interface);
    }
    // The acknowledge is often lost together with the old address: only a discovery tells.
    const auto end = clock.now() + time;
    for (auto now = clock.now(); now < end; now = clock.now()) {
        const auto look = std::chrono::ceil<std::chrono::milliseconds>(end - now);
        const auto device =
            findDevice(request.mac, reaching, std::min(kLookTime, look), kRivalTime, clock);
        if (device && (request.address == 0 || device->info.address == request.address)) {
            return Status::Ok;
        }
        if (const auto refusal = refusalIn(query.next(clock.now() + kLookPause), before)) {
            return *refusal;
        }
    }
    return Status::Timeout;
}

} // namespace gige::control
