#ifndef TELVO_GIGE_WIRE_DISCOVERYACK_H
#define TELVO_GIGE_WIRE_DISCOVERYACK_H

#include "ByteOrder.h"
#include "MacAddress.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace gige::wire
{

constexpr std::size_t kDiscoveryAckSize = 248;

/// Payload of the DISCOVERY acknowledge, 248 bytes: a copy of the bootstrap registers from 0x0000.
/// Addresses are numbers: 127.0.0.1 is 0x7F000001.
struct DiscoveryAck {
    std::uint16_t versionMajor = 0;        // @0    u16
    std::uint16_t versionMinor = 0;        // @2    u16
    std::uint32_t deviceMode = 0;          // @4    u32
    MacAddress mac{};                      // @10   6 bytes
    std::uint32_t supportedIpOptions = 0;  // @16   u32, kIpConfig… bits
    std::uint32_t currentIpOptions = 0;    // @20   u32, kIpConfig… bits
    std::uint32_t address = 0;             // @36   u32
    std::uint32_t subnetMask = 0;          // @52   u32
    std::uint32_t gateway = 0;             // @68   u32
    std::string manufacturer{};            // @72   32 bytes
    std::string model{};                   // @104  32 bytes
    std::string deviceVersion{};           // @136  32 bytes
    std::string manufacturerInformation{}; // @168  48 bytes
    std::string serialNumber{};            // @216  16 bytes, may be empty
    std::string userDefinedName{};         // @232  16 bytes, may be empty
    bool operator==(const DiscoveryAck&) const = default;
};

/// Texts longer than their field are cut; one that fills it has no NUL.
std::array<std::uint8_t, kDiscoveryAckSize> encode(const DiscoveryAck& ack);

/// Nothing below 40 bytes, where the address ends. What a shorter payload lacks is 0 or empty.
std::optional<DiscoveryAck> decodeDiscoveryAck(ByteView payload);

} // namespace gige::wire

#endif
