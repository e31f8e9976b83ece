#include "DeviceFinder.h"

#include "BootstrapRegisters.h"
#include "DeviceRegisters.h"

#include <chrono>
#include <utility>

namespace gige::ui
{

namespace
{

/// Between two rounds.
constexpr std::chrono::milliseconds kPause{1000};
/// For the one register that is read: a camera that answers discovery answers this, too.
constexpr std::uint32_t kAnswerTimeout = 200; // milliseconds
constexpr std::uint32_t kRetries = 1;

DeviceState stateHeard(const control::DiscoveredDevice& device)
{
    if (device.hasRival) {
        return DeviceState::Conflict;
    }
    return device.inSubnet() ? DeviceState::Unknown : DeviceState::OtherSubnet;
}

ListedDevice listed(const control::DiscoveredDevice& device)
{
    return {.mac = device.info.mac,
            .ip = device.ip(),
            .model = device.info.model,
            .serial = device.info.serialNumber,
            .name = device.info.userDefinedName,
            .state = stateHeard(device)};
}

DeviceState stateIn(const control::Result<std::uint32_t>& privilege)
{
    // Under exclusive access some devices refuse others even this register.
    if (privilege.status() == control::deviceError(wire::GvcpStatus::AccessDenied)) {
        return DeviceState::InUse;
    }
    if (!privilege) {
        return DeviceState::Silent;
    }
    const bool isHeld = (*privilege & (wire::kPrivilegeExclusive | wire::kPrivilegeControl)) != 0;
    return isHeld ? DeviceState::InUse : DeviceState::Free;
}

/// Reading needs no privilege, so asking disturbs nobody.
DeviceState askState(const control::DiscoveredDevice& device)
{
    if (const DeviceState heard = stateHeard(device); heard != DeviceState::Unknown) {
        return heard;
    }
    control::LinkSettings settings;
    settings.answerTimeout = kAnswerTimeout;
    settings.commandRetryCount = kRetries;
    const auto channel = control::ControlChannel::open(device.nic.address, device.ip(), settings);
    if (channel == nullptr) {
        return DeviceState::Silent;
    }
    return stateIn(control::DeviceRegisters(*channel).readRegister(wire::kRegControlPrivilege));
}

} // namespace

DeviceFinder::DeviceFinder(std::function<void()> changed)
    : mChanged(std::move(changed)), mThread([this](const std::stop_token& stop) { search(stop); })
{
}

DeviceFinder::Snapshot DeviceFinder::snapshot() const
{
    const std::lock_guard lock(mLock);
    return {mList.devices(), mList.selectedRow(), mIsSearching};
}

std::optional<ListedDevice> DeviceFinder::selected() const
{
    const std::lock_guard lock(mLock);
    return mList.selected();
}

void DeviceFinder::select(const wire::MacAddress& mac)
{
    const std::lock_guard lock(mLock);
    mList.select(mac);
}

void DeviceFinder::refresh()
{
    const std::lock_guard lock(mLock);
    mRefreshWanted = true;
    mWake.notify_all();
}

void DeviceFinder::search(const std::stop_token& stop)
{
    while (!stop.stop_requested()) {
        searchOnce(stop);
        pause(stop);
    }
}

void DeviceFinder::searchOnce(const std::stop_token& stop)
{
    change([this](DeviceList& /*list*/) {
        mIsSearching = true;
        mRefreshWanted = false;
    });
    const control::DeviceFound heard = [this](const control::DiscoveredDevice& device) {
        change([&](DeviceList& list) { list.hear(listed(device)); });
        return true;
    };
    const auto found =
        control::discover(control::usableInterfaces(), control::kDiscoveryTime, heard, stop);
    for (const control::DiscoveredDevice& device : found) {
        if (stop.stop_requested()) {
            return; // the round is not complete: nothing is known of those not heard
        }
        const DeviceState state = askState(device);
        change([&](DeviceList& list) { list.setState(device.info.mac, state); });
    }
    change([this](DeviceList& list) {
        list.endRound();
        mIsSearching = false;
    });
}

void DeviceFinder::pause(std::stop_token stop)
{
    std::unique_lock lock(mLock);
    mWake.wait_for(lock, std::move(stop), kPause, [this] { return mRefreshWanted; });
}

template <typename Change>
void DeviceFinder::change(Change operation)
{
    {
        const std::lock_guard lock(mLock);
        operation(mList);
    }
    mChanged();
}

std::string finderHint(const DeviceFinder::Snapshot& snapshot)
{
    if (snapshot.selectedRow) {
        const ListedDevice& selected = snapshot.devices[*snapshot.selectedRow];
        if (std::string hint = stateHint(selected.state); !hint.empty()) {
            return hint;
        }
    }
    if (!snapshot.devices.empty()) {
        return {};
    }
    return snapshot.isSearching ? "Searching..." : "No camera answers.";
}

} // namespace gige::ui
