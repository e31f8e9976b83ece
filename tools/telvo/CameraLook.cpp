#include "CameraLook.h"

#include "ToolError.h"

#include "BootstrapRegisters.h"
#include "DeviceSession.h"
#include "NodeFeatures.h"

namespace telvo
{

namespace
{

namespace control = gige::control;
namespace wire = gige::wire;

/// The value of a feature, if it is of this type.
template <typename T>
std::optional<T> valueOf(const std::unique_ptr<gige::ui::Feature>& feature)
{
    const gige::ui::FeatureState state = feature ? feature->read() : gige::ui::FeatureState();
    const T* const value = state.value ? std::get_if<T>(&*state.value) : nullptr;
    return value == nullptr ? std::nullopt : std::optional(*value);
}

} // namespace

CameraLook::CameraLook(const CameraAddress& address)
{
    // It outlives every connection, whose threads read it.
    static const control::LinkSettings kSettings;
    const PvResult opened = DeviceSession::open(
        {.ip = address.device.ip(), .nic = address.device.nic}, PvAccessType::Open, kSettings,
        [] {}, mDevice);
    if (opened.GetCode() == static_cast<std::uint32_t>(PvResult::Code::AccessDenied)) {
        throw Failure(heldByOther(address, ""));
    }
    if (!opened.IsOK()) {
        throw Failure("the camera at " + address.ip + " does not describe itself (" +
                      opened.GetCodeString().GetAscii() + "); 'telvo doctor' looks for the reason");
    }
}

CameraLook::~CameraLook()
{
    if (mDevice) {
        mDevice->disconnect();
    }
}

std::set<std::string, std::less<>> CameraLook::features() const
{
    std::set<std::string, std::less<>> names;
    for (const gige::genapi::Node* const node : mDevice->nodes().nodes()) {
        names.insert(node->name());
    }
    return names;
}

std::unique_ptr<gige::ui::Feature> CameraLook::find(std::string_view feature) const
{
    gige::genapi::Node* const node = mDevice->nodes().find(feature);
    return node == nullptr ? nullptr : gige::ui::featureOf(*node);
}

std::optional<std::int64_t> CameraLook::integer(std::string_view feature) const
{
    return valueOf<std::int64_t>(find(feature));
}

std::optional<bool> CameraLook::flag(std::string_view feature) const
{
    return valueOf<bool>(find(feature));
}

std::optional<std::string> CameraLook::text(std::string_view feature) const
{
    return valueOf<std::string>(find(feature));
}

std::int64_t CameraLook::linkSpeed() const
{
    control::DeviceRegisters& registers = mDevice->registers();
    return registers.traits().has(wire::kCapabilityLinkSpeed)
               ? registers.readRegister(wire::kRegLinkSpeed).valueOr(0)
               : 0;
}

bool CameraLook::resendsPackets() const
{
    return mDevice->registers().traits().has(wire::kCapabilityPacketResend);
}

std::optional<std::string> CameraLook::controllingHost() const
{
    control::DeviceRegisters& registers = mDevice->registers();
    const std::uint32_t privilege = registers.readRegister(wire::kRegControlPrivilege).valueOr(0);
    if ((privilege & (wire::kPrivilegeExclusive | wire::kPrivilegeControl)) == 0) {
        return std::nullopt;
    }
    const auto host = registers.readRegister(wire::kRegPrimaryApplicationAddress);
    if (!host || *host == 0) {
        return "";
    }
    const std::uint32_t port =
        registers.readRegister(wire::kRegPrimaryApplicationPort).valueOr(0) & 0xFFFFU;
    return gige::net::toText(gige::net::Ipv4Address{*host}) +
           (port == 0 ? "" : ", port " + std::to_string(port));
}

std::string heldByOther(const CameraAddress& address, const std::string& host)
{
    return "the camera at " + address.ip + " is held by " +
           (host.empty() ? "another program" : "a program on " + host) +
           "; end that program (one that crashed lets go within seconds)";
}

} // namespace telvo
