#include "DiscoveryList.h"

#include "GvcpHeader.h"

namespace gige::control
{

std::optional<DiscoveredDevice> discoveredIn(const HeardDatagram& heard)
{
    const auto ack = wire::decodeAck(heard.bytes);
    if (!ack || ack->header.command != wire::GvcpCommand::DiscoveryAck ||
        ack->header.requestId != kDiscoveryId || wire::isError(ack->header.status)) {
        return std::nullopt;
    }
    const auto info = wire::decodeDiscoveryAck(ack->payload);
    if (!info || info->address != heard.source.address.value) {
        return std::nullopt;
    }
    return DiscoveredDevice{.info = *info, .nic = heard.nic};
}

const DiscoveredDevice* DiscoveryList::add(const DiscoveredDevice& device)
{
    const auto place = mPlaces.find(device.info.mac);
    if (place == mPlaces.end()) {
        if (mDevices.size() >= kMostDevices) {
            return nullptr;
        }
        mPlaces.emplace(device.info.mac, mDevices.size());
        return &mDevices.emplace_back(device);
    }
    DiscoveredDevice& known = mDevices[place->second];
    if (known.hasRival) {
        return nullptr;
    }
    if (known.ip() != device.ip()) {
        known.hasRival = true;
        return &known;
    }
    if (known.inSubnet() || !device.inSubnet()) {
        return nullptr;
    }
    known = device;
    return &known;
}

} // namespace gige::control
