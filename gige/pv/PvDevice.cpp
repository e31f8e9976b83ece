#include "PvDevice.h"

#include "AddressText.h"
#include "Discovery.h"
#include "ForceIp.h"
#include "MacAddress.h"
#include "PvDeviceImpl.h"
#include "StatusTranslations.h"

#include <optional>
#include <utility>

using gige::control::DeviceAddress;

namespace
{

std::optional<DeviceAddress> locate(const PvString& address)
{
    const auto interfaces = gige::control::usableInterfaces();
    if (const auto mac = gige::wire::parseMac(address.GetAscii())) {
        const auto found = gige::control::findDevice(*mac, interfaces);
        return found ? std::optional(DeviceAddress{found->ip(), found->nic}) : std::nullopt;
    }
    const auto ip = parseAddressText(address);
    return ip ? gige::control::locateDevice(*ip, interfaces) : std::nullopt;
}

} // namespace

PvResult PvDevice::Impl::connect(const DeviceAddress& address, PvAccessType access)
{
    const std::lock_guard connecting(mConnectLock);
    if (const auto current = session(); current != nullptr && current->isConnected()) {
        return PvResult::Code::StateError;
    }
    std::shared_ptr<DeviceSession> opened;
    const PvResult result = DeviceSession::open(
        address, access, mLink.settings(),
        [sinks = mSinks, device = &mOwner] { sinks->notifyLinkDisconnected(device); }, opened);
    if (result.IsOK()) {
        const std::lock_guard lock(mLock);
        std::swap(mSession, opened);
    }
    return result;
}

PvResult PvDevice::Impl::disconnect()
{
    const std::lock_guard connecting(mConnectLock);
    const auto current = session();
    if (current == nullptr || !current->isConnected()) {
        return PvResult::Code::NotConnected;
    }
    current->disconnect();
    return PvResult::Code::Ok;
}

std::shared_ptr<DeviceSession> PvDevice::Impl::session() const
{
    const std::lock_guard lock(mLock);
    return mSession;
}

PvDevice::PvDevice() : mImpl(std::make_unique<Impl>(*this)) {}

PvDevice::~PvDevice()
{
    (void)mImpl->disconnect();
}

PvResult PvDevice::SetIPConfiguration(const PvString& macAddress, const PvString& ipAddress,
                                      const PvString& subnetMask, const PvString& gateway)
{
    const auto mac = gige::wire::parseMac(macAddress.GetAscii());
    const auto ip = parseAddressText(ipAddress);
    const auto mask = parseAddressText(subnetMask);
    const auto router = parseAddressText(gateway);
    if (!mac || !ip || !mask || !router) {
        return PvResult::Code::InvalidParameter;
    }
    return toPvResult(gige::control::forceIp(
        {.mac = *mac, .address = ip->value, .subnetMask = mask->value, .gateway = router->value},
        gige::control::usableInterfaces()));
}

PvResult PvDevice::Connect(const PvString& address, PvAccessType accessType)
{
    const auto located = locate(address);
    return located ? mImpl->connect(*located, accessType) : PvResult(PvResult::Code::NotFound);
}

PvResult PvDevice::Connect(const PvDeviceInfo* info, PvAccessType accessType)
{
    if (info == nullptr) {
        return PvResult::Code::InvalidParameter;
    }
    return Connect(info->GetMACAddress(), accessType);
}

PvResult PvDevice::Disconnect()
{
    return mImpl->disconnect();
}

bool PvDevice::IsConnected() const
{
    const auto session = mImpl->session();
    return session != nullptr && session->isConnected();
}

PvResult PvDevice::NegotiatePacketSize(std::uint32_t channel, std::uint32_t defaultSize)
{
    const auto session = mImpl->session();
    return session ? session->negotiatePacketSize(channel, defaultSize)
                   : PvResult(PvResult::Code::NotConnected);
}

PvResult PvDevice::SetStreamDestination(const PvString& ipAddress, std::uint16_t port,
                                        std::uint32_t channel)
{
    const auto address = parseAddressText(ipAddress);
    if (!address) {
        return PvResult::Code::InvalidParameter;
    }
    const auto session = mImpl->session();
    return session ? session->setStreamDestination({.address = *address, .port = port}, channel)
                   : PvResult(PvResult::Code::NotConnected);
}

PvResult PvDevice::ResetStreamDestination(std::uint32_t channel)
{
    const auto session = mImpl->session();
    return session ? session->resetStreamDestination(channel)
                   : PvResult(PvResult::Code::NotConnected);
}

PvResult PvDevice::RegisterEventSink(std::shared_ptr<PvDeviceEventSink> sink)
{
    return mImpl->sinks().add(std::move(sink));
}

PvResult PvDevice::UnregisterEventSink(const PvDeviceEventSink* sink)
{
    return mImpl->sinks().remove(sink);
}

PvGenParameterArray* PvDevice::GetGenParameters()
{
    const auto session = mImpl->session();
    return session ? &session->features() : &mImpl->noFeatures();
}

PvGenParameterArray* PvDevice::GetGenLink()
{
    return &mImpl->link().array();
}
