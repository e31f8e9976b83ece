#include "DeviceConnection.h"

#include "BootstrapRegisters.h"
#include "Discovery.h"
#include "GvcpPayloads.h"
#include "Reasons.h"
#include "StackLog.h"

#include <array>
#include <new>
#include <string>
#include <utility>

namespace gige::control
{

namespace
{

/// Why a connection does not come about, where that is known.
void sayRefusal(const DeviceAddress& address, Status status)
{
    const std::string ip = net::toText(address.ip);
    if (status == deviceError(wire::GvcpStatus::AccessDenied)) {
        log::say(ip, log::controlledBy(""));
    } else if (status == Status::Timeout && !address.nic.contains(address.ip)) {
        log::say("", log::notInSubnet(ip, address.nic.name));
    } else if (status == Status::Timeout) {
        log::say(ip, log::noAnswer(listOf({address.nic}).view()));
    }
}

} // namespace

Result<std::unique_ptr<DeviceConnection>> DeviceConnection::open(const DeviceAddress& address,
                                                                 AccessType access,
                                                                 const LinkSettings& settings,
                                                                 std::function<void()> linkLost,
                                                                 const ControlLimits& limits)
{
    auto channel = ControlChannel::open(address.nic.address, address.ip, settings, limits);
    return channel
               ? open(std::move(channel), address, access, settings, std::move(linkLost), limits)
               : Status::NetworkError;
}

Result<std::unique_ptr<DeviceConnection>>
DeviceConnection::open(std::unique_ptr<ControlChannel> channel, const DeviceAddress& address,
                       AccessType access, const LinkSettings& settings,
                       std::function<void()> linkLost, const ControlLimits& limits)
{
    std::unique_ptr<DeviceConnection> device(
        new DeviceConnection(address, access, std::move(channel)));
    const auto opening = device->opening();
    if (const Status read = device->mRegisters.readTraits(); read != Status::Ok) {
        sayRefusal(address, read);
        return read;
    }
    device->mMayHaveControl =
        access != AccessType::Open; // also if there is no memory for the answer
    if (const Status taken = device->takeControl(); taken != Status::Ok) {
        device->mMayHaveControl = false;
        sayRefusal(address, taken);
        return taken;
    }
    const HeartbeatDuty duty =
        device->agreeOnHeartbeat(settings.defaultHeartbeatTimeout, limits.heartbeat);
    device->enableOptions();
    device->mHeartbeat = Heartbeat::start(*device->mChannel, device->mRegisters, settings, duty,
                                          std::move(linkLost));
    if (!device->mHeartbeat) {
        return Status::NetworkError;
    }
    return device;
}

DeviceConnection::DeviceConnection(DeviceAddress address, AccessType access,
                                   std::unique_ptr<ControlChannel> channel)
    : mAddress(std::move(address)),
      mAccess(access),
      mChannel(std::move(channel)),
      mRegisters(*mChannel)
{
}

DeviceConnection::~DeviceConnection()
{
    disconnect();
}

void DeviceConnection::disconnect()
{
    if (mDisconnected.exchange(true)) {
        return;
    }
    if (!mHeartbeat) { // the connection never came about, but control may be taken already
        mChannel->close();
    }
    const bool linkWasUp = !mHeartbeat || mHeartbeat->stop();
    if (linkWasUp && mMayHaveControl) {
        release();
    }
}

void DeviceConnection::release() noexcept
{
    try {
        const wire::WriteRegister release{{{wire::kRegControlPrivilege, wire::kPrivilegeOpen}}};
        (void)mChannel->executeLast(
            {.code = wire::GvcpCommand::WriteRegister, .payload = encode(release)});
    } catch (const std::bad_alloc&) {
        // The device frees itself when it has missed the heartbeat for long enough.
    }
}

Status DeviceConnection::takeControl()
{
    if (mAccess == AccessType::Open) {
        return Status::Ok;
    }
    const Status written =
        mRegisters.writeRegister(wire::kRegControlPrivilege, static_cast<std::uint32_t>(mAccess));
    if (written != Status::Timeout) {
        return written;
    }
    // Some devices drop what another host writes, but answer its reads.
    const auto privilege = mRegisters.readRegister(wire::kRegControlPrivilege);
    const bool held = privilege && *privilege != wire::kPrivilegeOpen;
    return held ? deviceError(wire::GvcpStatus::AccessDenied) : written;
}

HeartbeatDuty DeviceConnection::agreeOnHeartbeat(std::uint32_t timeout,
                                                 const HeartbeatBounds& bounds)
{
    if (mAccess == AccessType::Open) {
        return {.timeout = bounds.believed(timeout), .bounds = bounds};
    }
    // A device may clamp the value, or not let it be written. What counts is what it has then.
    (void)mRegisters.writeRegister(wire::kRegHeartbeatTimeout, timeout);
    const auto agreed = mRegisters.readRegister(wire::kRegHeartbeatTimeout);
    if (agreed && *agreed != 0) {
        timeout = *agreed;
    }
    return {.ownsControl = true,
            .owner = readOwner(),
            .timeout = bounds.believed(timeout),
            .timeoutReadable = agreed.status() == Status::Ok,
            .bounds = bounds};
}

std::optional<PrimaryApplication> DeviceConnection::readOwner()
{
    if (!mRegisters.traits().has(wire::kCapabilityPrimaryApplication)) {
        return std::nullopt;
    }
    const auto values = mRegisters.readRegisters(
        std::array{wire::kRegPrimaryApplicationPort, wire::kRegPrimaryApplicationAddress});
    if (!values) {
        return std::nullopt;
    }
    return PrimaryApplication{.port = (*values)[0], .address = (*values)[1]};
}

void DeviceConnection::enableOptions()
{
    const DeviceTraits& traits = mRegisters.traits();
    std::uint32_t wanted = 0;
    if (traits.has(wire::kCapabilityPendingAck)) {
        wanted |= wire::kConfigPendingAckEnable;
    }
    if (traits.has(wire::kCapabilityExtendedStatus11)) {
        wanted |= wire::kConfigExtendedStatus11;
    }
    if (mAccess == AccessType::Open || wanted == 0) {
        return;
    }
    const auto present = mRegisters.readRegister(wire::kRegGvcpConfiguration);
    if (present && (*present & wanted) != wanted) {
        // An option that cannot be switched on is one that we do without.
        (void)mRegisters.writeRegister(wire::kRegGvcpConfiguration, *present | wanted);
    }
}

} // namespace gige::control
