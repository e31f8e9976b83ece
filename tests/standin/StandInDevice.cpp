#include "StandInDevice.h"

#include "StandIn.h"

#include <initializer_list>
#include <utility>

namespace
{

/// "a b c"; an empty argument shows as "''".
std::string join(std::initializer_list<std::string> arguments)
{
    std::string text;
    for (const std::string& argument : arguments) {
        text += (text.empty() ? "" : " ") + (argument.empty() ? "''" : argument);
    }
    return text;
}

std::string number(std::uint32_t value)
{
    return std::to_string(value);
}

std::string number(PvAccessType type)
{
    return std::to_string(static_cast<std::uint32_t>(type));
}

} // namespace

PvDevice::PvDevice() : mImpl(std::make_unique<Impl>())
{
    mImpl->label = StandIn::current().nextLabel("PvDevice");
    StandIn::current().addDevice(this);
}

PvDevice::~PvDevice()
{
    StandIn::current().removeDevice(this);
    StandIn::current().record(StandIn::Kind::Query, mImpl->label + " destroyed");
}

PvResult PvDevice::SetIPConfiguration(const PvString& macAddress, const PvString& ipAddress,
                                      const PvString& subnetMask, const PvString& gateway)
{
    return StandIn::current().call("PvDevice.SetIPConfiguration",
                                   join({macAddress.GetAscii(), ipAddress.GetAscii(),
                                         subnetMask.GetAscii(), gateway.GetAscii()}));
}

PvResult PvDevice::Connect(const PvString& address, PvAccessType accessType)
{
    const PvResult result = StandIn::current().call(mImpl->label + ".Connect",
                                                    join({address.GetAscii(), number(accessType)}));
    mImpl->connected = result.IsOK();
    return result;
}

PvResult PvDevice::Connect(const PvDeviceInfo* info, PvAccessType accessType)
{
    const PvResult result = StandIn::current().call(
        mImpl->label + ".Connect",
        join({"selected", info->GetMACAddress().GetAscii(), number(accessType)}));
    mImpl->connected = result.IsOK();
    return result;
}

PvResult PvDevice::Disconnect()
{
    const PvResult result = StandIn::current().call(mImpl->label + ".Disconnect");
    mImpl->connected = false;
    return result;
}

bool PvDevice::IsConnected() const
{
    StandIn::current().record(StandIn::Kind::Query, mImpl->label + ".IsConnected");
    return mImpl->connected;
}

PvResult PvDevice::NegotiatePacketSize(std::uint32_t channel, std::uint32_t defaultSize)
{
    return StandIn::current().call(mImpl->label + ".NegotiatePacketSize",
                                   join({number(channel), number(defaultSize)}));
}

PvResult PvDevice::SetStreamDestination(const PvString& ipAddress, std::uint16_t port,
                                        std::uint32_t channel)
{
    return StandIn::current().call(mImpl->label + ".SetStreamDestination",
                                   join({ipAddress.GetAscii(), number(port), number(channel)}));
}

PvResult PvDevice::ResetStreamDestination(std::uint32_t channel)
{
    return StandIn::current().call(mImpl->label + ".ResetStreamDestination", number(channel));
}

PvResult PvDevice::RegisterEventSink(std::shared_ptr<PvDeviceEventSink> sink)
{
    mImpl->sink.set(std::move(sink)); // the link may be lost while this call lasts
    const PvResult result = StandIn::current().call(mImpl->label + ".RegisterEventSink");
    if (!result.IsOK()) {
        mImpl->sink.set(nullptr);
    }
    return result;
}

PvResult PvDevice::UnregisterEventSink(const PvDeviceEventSink* /*sink*/)
{
    mImpl->sink.set(nullptr);
    return StandIn::current().call(mImpl->label + ".UnregisterEventSink");
}

PvGenParameterArray* PvDevice::GetGenParameters()
{
    return &StandIn::current().camera();
}

PvGenParameterArray* PvDevice::GetGenLink()
{
    return &StandIn::current().link();
}
