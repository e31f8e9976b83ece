#include "DeviceList.h"

#include "DisplayText.h"

#include <algorithm>

namespace gige::ui
{

namespace
{

/// Rounds that a camera may miss before it is taken for gone.
constexpr int kSilentRounds = 2;

std::string stateText(DeviceState state)
{
    switch (state) {
    case DeviceState::Unknown:
        return "asking";
    case DeviceState::Free:
        return "free";
    case DeviceState::InUse:
        return "in use";
    case DeviceState::OtherSubnet:
        return "other subnet";
    case DeviceState::Conflict:
        return "MAC conflict";
    case DeviceState::Silent:
        return "no answer";
    }
    return {};
}

} // namespace

DeviceTexts deviceHeadings()
{
    return {"MAC address", "IP address", "Model", "Serial number", "Name", "State"};
}

DeviceTexts deviceTexts(const ListedDevice& device)
{
    return {wire::toText(device.mac),   toText(device.ip),        displayText(device.model),
            displayText(device.serial), displayText(device.name), stateText(device.state)};
}

std::string stateHint(DeviceState state)
{
    switch (state) {
    case DeviceState::InUse:
        return "Another program controls this camera.";
    case DeviceState::OtherSubnet:
        return "This camera's address is in a subnet that this computer does not reach.";
    case DeviceState::Conflict:
        return "Another device claims this camera's MAC address.";
    case DeviceState::Silent:
        return "This camera was found, but does not answer.";
    case DeviceState::Unknown:
    case DeviceState::Free:
        break;
    }
    return {};
}

void DeviceList::hear(const ListedDevice& device)
{
    const auto place = std::ranges::lower_bound(
        mEntries, device.mac.bytes, {}, [](const Entry& entry) { return entry.device.mac.bytes; });
    if (place == mEntries.end() || place->device.mac != device.mac) {
        mEntries.insert(place, {.device = device});
        return;
    }
    const DeviceState before = place->device.state;
    const bool staysInReach = place->device.isReachable() && device.isReachable();
    *place = {.device = device};
    if (staysInReach) {
        place->device.state = before;
    }
}

void DeviceList::setState(const wire::MacAddress& mac, DeviceState state)
{
    if (const auto entry = find(mac); entry != mEntries.end()) {
        entry->device.state = state;
    }
}

void DeviceList::endRound()
{
    std::erase_if(mEntries, [](Entry& entry) { return entry.silentRounds++ >= kSilentRounds; });
    if (mSelected && find(*mSelected) == mEntries.end()) {
        mSelected.reset();
    }
}

void DeviceList::select(const wire::MacAddress& mac)
{
    if (find(mac) != mEntries.end()) {
        mSelected = mac;
    }
}

std::vector<ListedDevice> DeviceList::devices() const
{
    std::vector<ListedDevice> devices;
    devices.reserve(mEntries.size());
    std::ranges::transform(mEntries, std::back_inserter(devices), &Entry::device);
    return devices;
}

std::optional<std::size_t> DeviceList::selectedRow() const
{
    const auto entry = std::ranges::find_if(
        mEntries, [this](const Entry& one) { return one.device.mac == mSelected; });
    return entry == mEntries.end()
               ? std::nullopt
               : std::optional(static_cast<std::size_t>(entry - mEntries.begin()));
}

std::optional<ListedDevice> DeviceList::selected() const
{
    const auto row = selectedRow();
    return row ? std::optional(mEntries[*row].device) : std::nullopt;
}

std::vector<DeviceList::Entry>::iterator DeviceList::find(const wire::MacAddress& mac)
{
    return std::ranges::find_if(mEntries,
                                [&](const Entry& entry) { return entry.device.mac == mac; });
}

} // namespace gige::ui
