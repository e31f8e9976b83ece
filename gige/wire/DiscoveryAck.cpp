#include "DiscoveryAck.h"

#include <algorithm>

namespace gige::wire
{

namespace
{

constexpr std::size_t kShortestAck = 40;
constexpr std::ptrdiff_t kMacOffset = 10;

struct TextField {
    std::size_t offset;
    std::size_t length;
    std::string DiscoveryAck::*text;
};

constexpr std::array<TextField, 6> kTexts{{
    {72, 32, &DiscoveryAck::manufacturer},
    {104, 32, &DiscoveryAck::model},
    {136, 32, &DiscoveryAck::deviceVersion},
    {168, 48, &DiscoveryAck::manufacturerInformation},
    {216, 16, &DiscoveryAck::serialNumber},
    {232, 16, &DiscoveryAck::userDefinedName},
}};

} // namespace

std::array<std::uint8_t, kDiscoveryAckSize> encode(const DiscoveryAck& ack)
{
    std::array<std::uint8_t, kDiscoveryAckSize> bytes{};
    putU16(bytes.data(), ack.versionMajor);
    putU16(&bytes[2], ack.versionMinor);
    putU32(&bytes[4], ack.deviceMode);
    std::copy(ack.mac.bytes.begin(), ack.mac.bytes.end(), bytes.begin() + kMacOffset);
    putU32(&bytes[16], ack.supportedIpOptions);
    putU32(&bytes[20], ack.currentIpOptions);
    putU32(&bytes[36], ack.address);
    putU32(&bytes[52], ack.subnetMask);
    putU32(&bytes[68], ack.gateway);
    for (const TextField& field : kTexts) {
        putText(ByteSpan(bytes).subspan(field.offset, field.length), ack.*field.text);
    }
    return bytes;
}

std::optional<DiscoveryAck> decodeDiscoveryAck(ByteView payload)
{
    if (payload.size() < kShortestAck) {
        return std::nullopt;
    }
    std::array<std::uint8_t, kDiscoveryAckSize> bytes{};
    std::copy_n(payload.begin(), std::min(payload.size(), bytes.size()), bytes.begin());
    DiscoveryAck ack{.versionMajor = getU16(bytes.data()),
                     .versionMinor = getU16(&bytes[2]),
                     .deviceMode = getU32(&bytes[4]),
                     .supportedIpOptions = getU32(&bytes[16]),
                     .currentIpOptions = getU32(&bytes[20]),
                     .address = getU32(&bytes[36]),
                     .subnetMask = getU32(&bytes[52]),
                     .gateway = getU32(&bytes[68])};
    std::copy_n(bytes.begin() + kMacOffset, ack.mac.bytes.size(), ack.mac.bytes.begin());
    for (const TextField& field : kTexts) {
        ack.*field.text = getText(ByteView(bytes).subspan(field.offset, field.length));
    }
    return ack;
}

} // namespace gige::wire
