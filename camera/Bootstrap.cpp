#include "Bootstrap.h"

#include "BootstrapRegisters.h"
#include "ByteOrder.h"

#include <algorithm>
#include <array>
#include <utility>

namespace camera
{

using namespace gige::wire;

namespace
{

constexpr StreamChannelRegisters kStream{0};
constexpr std::uint32_t kStreamLength = 0x40;
constexpr std::uint32_t kNameLength = 16;
constexpr std::uint32_t kTickFrequency = 1'000'000'000; // Hz: ticks are nanoseconds
constexpr std::uint32_t kLinkSpeed = 10'000;            // Mbit/s, when the cable is not set
constexpr std::uint64_t kMegabit = 1'000'000;
constexpr std::uint32_t kShortestHeartbeat = 500; // ms
constexpr std::uint32_t kPendingTimeout = 200;    // ms
constexpr std::uint32_t kCapabilities =
    kCapabilityConcatenation | kCapabilityWriteMemory | kCapabilityPacketResend |
    kCapabilityPendingAck | kCapabilityPrimaryApplication | kCapabilityLinkSpeed |
    kCapabilityHeartbeatDisable | kCapabilitySerialNumber | kCapabilityUserDefinedName;
constexpr std::uint32_t kStreamCapabilities = 0xC0000000; // SCSP is there, 16-bit ids are too
constexpr std::uint32_t kConfigurable = kConfigHeartbeatDisable | kConfigPendingAckEnable;

std::uint32_t high(std::uint64_t value)
{
    return static_cast<std::uint32_t>(value >> 32);
}
std::uint32_t low(std::uint64_t value)
{
    return static_cast<std::uint32_t>(value);
}

} // namespace

Bootstrap::Bootstrap(const CameraOptions& options, const NetworkIdentity& network, std::string url,
                     Device& device, Faults& faults)
    : mOptions(options), mNetwork(network), mUrl(std::move(url)), mDevice(device), mFaults(faults)
{
}

DiscoveryAck Bootstrap::identity() const
{
    return {.versionMajor = 1,
            .versionMinor = 2,
            .deviceMode = kModeBigEndian | kModeUtf8,
            .mac = mNetwork.mac,
            .supportedIpOptions = kIpConfigPersistent | kIpConfigDhcp | kIpConfigLinkLocal,
            .currentIpOptions = kIpConfigPersistent | kIpConfigLinkLocal,
            .address = mNetwork.address.value,
            .subnetMask = mNetwork.netmask.value,
            .gateway = 0,
            .manufacturer = mOptions.vendor,
            .model = mOptions.model,
            .deviceVersion = mOptions.version,
            .manufacturerInformation = "virtual high-speed camera",
            .serialNumber = mOptions.serial,
            .userDefinedName = mDevice.userName()};
}

std::optional<std::uint32_t> Bootstrap::read(std::uint32_t address) const
{
    if (address < kDiscoveryAckSize ||
        (address >= kRegFirstUrl && address < kRegSecondUrl + kUrlLength)) {
        return readText(address);
    }
    if (address >= kStream.base && address < kStream.base + kStreamLength) {
        return readStream(address);
    }
    const auto owner = mPrivilege.owner();
    switch (address) {
    case kRegInterfaceCount:
    case kRegStreamChannelCount:
        return 1;
    case kRegPersistentIpAddress:
        return mNetwork.address.value;
    case kRegPersistentSubnetMask:
        return mNetwork.netmask.value;
    case kRegLinkSpeed:
        return mOptions.linkRate == 0 ? kLinkSpeed : low(mOptions.linkRate / kMegabit);
    case kRegStreamChannelsCapability:
        return kStreamCapabilities;
    case kRegGvcpCapability:
        return kCapabilities;
    case kRegHeartbeatTimeout:
        return mHeartbeat;
    case kRegTimestampFrequencyLow:
        return kTickFrequency;
    case kRegTimestampHigh:
        return high(mLatchedTime);
    case kRegTimestampLow:
        return low(mLatchedTime);
    case kRegGvcpConfiguration:
        return mGvcpConfiguration;
    case kRegPendingTimeout:
        return kPendingTimeout;
    case kRegGvspConfiguration:
        return mDevice.channel().extendedIds ? kConfigExtendedBlockIds : 0;
    case kRegControlPrivilege:
        return mPrivilege.value();
    case kRegPrimaryApplicationPort:
        return owner ? owner->port : 0;
    case kRegPrimaryApplicationAddress:
        return owner ? owner->address.value : 0;
    case kRegPersistentGateway:
    case kRegMessageChannelCount:
    case kRegMessageChannelCapability:
    case kRegTimestampFrequencyHigh:
    case kRegTimestampControl:
    case kRegDiscoveryAckDelay:
    case kRegControlSwitchoverKey:
        return 0;
    default:
        return std::nullopt;
    }
}

std::optional<std::uint32_t> Bootstrap::readText(std::uint32_t address) const
{
    if (address < kDiscoveryAckSize) {
        const auto bytes = encode(identity());
        return getU32(&bytes[address]);
    }
    if (address >= kRegSecondUrl) {
        return 0; // no second description
    }
    std::array<std::uint8_t, kUrlLength> url{};
    putText(url, mUrl);
    return getU32(&url[address - kRegFirstUrl]);
}

std::optional<std::uint32_t> Bootstrap::readStream(std::uint32_t address) const
{
    const StreamChannel channel = mDevice.channel();
    if (address == kStream.port()) {
        return channel.destination.port;
    }
    if (address == kStream.packetSize()) {
        return channel.packetSize | (channel.dontFragment ? kDoNotFragment : 0);
    }
    if (address == kStream.packetDelay()) {
        return channel.delay;
    }
    if (address == kStream.destinationAddress()) {
        return channel.destination.address.value;
    }
    if (address == kStream.sourcePort()) {
        return mSourcePort;
    }
    if (address == kStream.capability() || address == kStream.configuration()) {
        return 0;
    }
    return std::nullopt;
}

GvcpStatus Bootstrap::write(std::uint32_t address, std::uint32_t value, const Endpoint& from)
{
    if (address >= kRegUserDefinedName && address < kRegUserDefinedName + kNameLength) {
        writeUserName(address, value);
        return Status::Success;
    }
    if (address >= kStream.base && address < kStream.base + kStreamLength) {
        return writeStream(address, value);
    }
    switch (address) {
    case kRegCurrentIpConfiguration:
    case kRegPersistentIpAddress:
    case kRegPersistentSubnetMask:
    case kRegPersistentGateway:
        return Status::Success; // the address belongs to this machine: nothing changes
    case kRegHeartbeatTimeout:
        mHeartbeat = std::max(value, kShortestHeartbeat);
        return Status::Success;
    case kRegTimestampControl:
        mLatchedTime = (value & kTimestampLatch) != 0
                           ? static_cast<std::uint64_t>(mDevice.now().count())
                           : mLatchedTime;
        return Status::Success;
    case kRegGvcpConfiguration:
        mGvcpConfiguration = value & kConfigurable;
        return Status::Success;
    case kRegGvspConfiguration: {
        StreamChannel channel = mDevice.channel();
        channel.extendedIds = (value & kConfigExtendedBlockIds) != 0;
        mDevice.setChannel(channel);
        return Status::Success;
    }
    case kRegControlPrivilege:
        return writePrivilege(value, from);
    default:
        return read(address) ? Status::WriteProtect : Status::InvalidAddress;
    }
}

GvcpStatus Bootstrap::writeStream(std::uint32_t address, std::uint32_t value)
{
    StreamChannel channel = mDevice.channel();
    if (address == kStream.packetSize()) {
        return writePacketSize(value);
    }
    if (address == kStream.port()) {
        channel.destination.port = static_cast<std::uint16_t>(value & kPortMask);
    } else if (address == kStream.packetDelay()) {
        if (!featureOf(FeatureId::GevSCPD).limits.hold(value)) {
            return Status::InvalidParameter;
        }
        channel.delay = value;
    } else if (address == kStream.destinationAddress()) {
        channel.destination.address = {value};
    } else {
        return readStream(address) ? Status::WriteProtect : Status::InvalidAddress;
    }
    mDevice.setChannel(channel);
    return Status::Success;
}

GvcpStatus Bootstrap::writePacketSize(std::uint32_t value)
{
    const Limits& limits = featureOf(FeatureId::GevSCPSPacketSize).limits;
    const std::int64_t ceiling = std::min<std::int64_t>(limits.maximum, mFaults.packetSizeLimit());
    std::int64_t size = value & kPacketSizeMask;
    size = std::clamp(size, limits.minimum, std::max(limits.minimum, ceiling));
    size -= (size - limits.minimum) % limits.increment;
    StreamChannel channel = mDevice.channel();
    channel.packetSize = static_cast<std::uint32_t>(size);
    channel.dontFragment = (value & kDoNotFragment) != 0;
    mDevice.setChannel(channel);
    mTestRequested = (value & kFireTestPacket) != 0;
    return Status::Success;
}

GvcpStatus Bootstrap::writePrivilege(std::uint32_t value, const Endpoint& from)
{
    const Status status = mPrivilege.write(value, from, mDevice.now());
    if (status == Status::Success && mPrivilege.value() == kPrivilegeOpen) {
        dropHost();
    }
    return status;
}

void Bootstrap::writeUserName(std::uint32_t address, std::uint32_t value)
{
    std::array<std::uint8_t, kNameLength> name{};
    putText(name, mDevice.userName());
    putU32(&name[address - kRegUserDefinedName], value);
    mDevice.setUserName(getText(name));
}

CameraTime Bootstrap::heartbeatTimeout() const
{
    return std::chrono::milliseconds(mHeartbeat);
}

bool Bootstrap::heartbeatEnabled() const
{
    return (mGvcpConfiguration & kConfigHeartbeatDisable) == 0;
}

bool Bootstrap::pendingAckEnabled() const
{
    return (mGvcpConfiguration & kConfigPendingAckEnable) != 0;
}

void Bootstrap::dropHost()
{
    mPrivilege.release();
    mDevice.dropHost();
}

bool Bootstrap::takeTestRequest()
{
    return std::exchange(mTestRequested, false);
}

} // namespace camera
