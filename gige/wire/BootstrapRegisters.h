/// Addresses of the bootstrap registers that every device has, and the bits of their values.
/// 32 bits each, big-endian, unless a length is named.
#ifndef TELVO_GIGE_WIRE_BOOTSTRAPREGISTERS_H
#define TELVO_GIGE_WIRE_BOOTSTRAPREGISTERS_H

#include <cstdint>

namespace gige::wire
{

// Identity. The first 248 bytes are the DISCOVERY acknowledge's payload.
constexpr std::uint32_t kRegVersion = 0x0000;
constexpr std::uint32_t kRegDeviceMode = 0x0004;
constexpr std::uint32_t kRegMacHigh = 0x0008; // low 16 bits: first two bytes of the MAC
constexpr std::uint32_t kRegMacLow = 0x000C;
constexpr std::uint32_t kRegSupportedIpConfiguration = 0x0010;
constexpr std::uint32_t kRegCurrentIpConfiguration = 0x0014;
constexpr std::uint32_t kRegCurrentIpAddress = 0x0024;
constexpr std::uint32_t kRegCurrentSubnetMask = 0x0034;
constexpr std::uint32_t kRegCurrentGateway = 0x0044;
constexpr std::uint32_t kRegManufacturerName = 0x0048;        // text, 32 bytes
constexpr std::uint32_t kRegModelName = 0x0068;               // text, 32 bytes
constexpr std::uint32_t kRegDeviceVersion = 0x0088;           // text, 32 bytes
constexpr std::uint32_t kRegManufacturerInformation = 0x00A8; // text, 48 bytes
constexpr std::uint32_t kRegSerialNumber = 0x00D8;            // text, 16 bytes
constexpr std::uint32_t kRegUserDefinedName = 0x00E8;         // text, 16 bytes
constexpr std::uint32_t kRegFirstUrl = 0x0200;                // text, 512 bytes
constexpr std::uint32_t kRegSecondUrl = 0x0400;               // text, 512 bytes
constexpr std::uint32_t kUrlLength = 512;

// kRegDeviceMode
constexpr std::uint32_t kModeBigEndian = 0x80000000; // manufacturer registers are big-endian
constexpr std::uint32_t kModeUtf8 = 0x00000001;
constexpr std::uint32_t kModeAscii = 0x00000002;

// kRegSupportedIpConfiguration, kRegCurrentIpConfiguration
constexpr std::uint32_t kIpConfigPersistent = 0x1;
constexpr std::uint32_t kIpConfigDhcp = 0x2;
constexpr std::uint32_t kIpConfigLinkLocal = 0x4;

// Network interface 0.
constexpr std::uint32_t kRegInterfaceCount = 0x0600;
constexpr std::uint32_t kRegPersistentIpAddress = 0x064C;
constexpr std::uint32_t kRegPersistentSubnetMask = 0x065C;
constexpr std::uint32_t kRegPersistentGateway = 0x066C;
constexpr std::uint32_t kRegLinkSpeed = 0x0670; // Mbit/s

// Channels, capabilities, time.
constexpr std::uint32_t kRegMessageChannelCount = 0x0900;
constexpr std::uint32_t kRegStreamChannelCount = 0x0904;
constexpr std::uint32_t kRegStreamChannelsCapability = 0x092C;
constexpr std::uint32_t kRegMessageChannelCapability = 0x0930;
constexpr std::uint32_t kRegGvcpCapability = 0x0934;
constexpr std::uint32_t kRegHeartbeatTimeout = 0x0938;       // milliseconds
constexpr std::uint32_t kRegTimestampFrequencyHigh = 0x093C; // Hz, 64 bits
constexpr std::uint32_t kRegTimestampFrequencyLow = 0x0940;
constexpr std::uint32_t kRegTimestampControl = 0x0944;
constexpr std::uint32_t kRegTimestampHigh = 0x0948; // latched, 64 bits
constexpr std::uint32_t kRegTimestampLow = 0x094C;
constexpr std::uint32_t kRegDiscoveryAckDelay = 0x0950; // milliseconds, low 16 bits
constexpr std::uint32_t kRegGvcpConfiguration = 0x0954;
constexpr std::uint32_t kRegPendingTimeout = 0x0958; // milliseconds
constexpr std::uint32_t kRegControlSwitchoverKey = 0x095C;
constexpr std::uint32_t kRegGvspConfiguration = 0x0960;

// kRegGvcpCapability
constexpr std::uint32_t kCapabilityConcatenation = 0x00000001;
constexpr std::uint32_t kCapabilityWriteMemory = 0x00000002;
constexpr std::uint32_t kCapabilityPacketResend = 0x00000004;
constexpr std::uint32_t kCapabilityEvent = 0x00000008;
constexpr std::uint32_t kCapabilityEventData = 0x00000010;
constexpr std::uint32_t kCapabilityPendingAck = 0x00000020;
constexpr std::uint32_t kCapabilityAction = 0x00000040;
constexpr std::uint32_t kCapabilitySwitchover = 0x00200000;
constexpr std::uint32_t kCapabilityExtendedStatus11 = 0x00400000;
constexpr std::uint32_t kCapabilityDiscoveryAckDelayWritable = 0x00800000;
constexpr std::uint32_t kCapabilityDiscoveryAckDelay = 0x01000000;
constexpr std::uint32_t kCapabilityTestData = 0x02000000;
constexpr std::uint32_t kCapabilityManifest = 0x04000000;
constexpr std::uint32_t kCapabilityPrimaryApplication = 0x08000000; // port and IP registers
constexpr std::uint32_t kCapabilityLinkSpeed = 0x10000000;
constexpr std::uint32_t kCapabilityHeartbeatDisable = 0x20000000;
constexpr std::uint32_t kCapabilitySerialNumber = 0x40000000;
constexpr std::uint32_t kCapabilityUserDefinedName = 0x80000000;

// kRegTimestampControl
constexpr std::uint32_t kTimestampReset = 0x1;
constexpr std::uint32_t kTimestampLatch = 0x2;

// kRegGvcpConfiguration
constexpr std::uint32_t kConfigHeartbeatDisable = 0x1;
constexpr std::uint32_t kConfigPendingAckEnable = 0x2;
constexpr std::uint32_t kConfigExtendedStatus11 = 0x4;

// kRegGvspConfiguration
constexpr std::uint32_t kConfigExtendedBlockIds = 0x40000000;

// Control channel privilege (CCP) and who holds it.
constexpr std::uint32_t kRegControlPrivilege = 0x0A00;
constexpr std::uint32_t kRegPrimaryApplicationPort = 0x0A04; // low 16 bits
constexpr std::uint32_t kRegPrimaryApplicationAddress = 0x0A14;

// kRegControlPrivilege
constexpr std::uint32_t kPrivilegeOpen = 0x0;
constexpr std::uint32_t kPrivilegeExclusive = 0x1;
constexpr std::uint32_t kPrivilegeControl = 0x2;
constexpr std::uint32_t kPrivilegeSwitchover = 0x4;

// Message channel.
constexpr std::uint32_t kRegMessagePort = 0x0B00;
constexpr std::uint32_t kRegMessageDestination = 0x0B10;
constexpr std::uint32_t kRegMessageTimeout = 0x0B14; // milliseconds
constexpr std::uint32_t kRegMessageRetryCount = 0x0B18;
constexpr std::uint32_t kRegMessageSourcePort = 0x0B1C;

constexpr std::uint32_t kManufacturerRegisters = 0xA000; // from here on

/// Registers of one stream channel, 64 bytes each.
struct StreamChannelRegisters {
    std::uint32_t base;

    /// @param channel  0..511
    constexpr explicit StreamChannelRegisters(std::uint32_t channel) : base(0x0D00 + 0x40 * channel)
    {
    }
    constexpr std::uint32_t port() const { return base; }                      // SCP
    constexpr std::uint32_t packetSize() const { return base + 0x04; }         // SCPS
    constexpr std::uint32_t packetDelay() const { return base + 0x08; }        // SCPD, ticks
    constexpr std::uint32_t destinationAddress() const { return base + 0x18; } // SCDA
    constexpr std::uint32_t sourcePort() const { return base + 0x1C; }         // SCSP
    constexpr std::uint32_t capability() const { return base + 0x20; }         // SCC
    constexpr std::uint32_t configuration() const { return base + 0x24; }      // SCCFG
};

// SCP
constexpr std::uint32_t kPortMask = 0x0000FFFF; // host UDP port, 0: channel closed

// SCPS
constexpr std::uint32_t kPacketSizeMask = 0x0000FFFF; // bytes of the IP datagram
constexpr std::uint32_t kFireTestPacket = 0x80000000; // reads as 0
constexpr std::uint32_t kDoNotFragment = 0x40000000;
constexpr std::uint32_t kPixelsBigEndian = 0x20000000;

} // namespace gige::wire

#endif
