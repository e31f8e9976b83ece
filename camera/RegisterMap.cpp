#include "RegisterMap.h"

#include "BootstrapRegisters.h"
#include "ByteOrder.h"

#include <algorithm>

namespace camera
{

using namespace gige::wire;

namespace
{

constexpr std::uint32_t kRegisterSize = 4; // bytes

/// Index of the word at address in an area of words; nothing outside.
std::optional<FeatureId> indexIn(std::uint32_t base, std::uint32_t address)
{
    const std::uint32_t index = (address - base) / kRegisterSize;
    return address >= base && index < kFeatureCount ? std::optional{static_cast<FeatureId>(index)}
                                                    : std::nullopt;
}

bool isIn(std::uint32_t base, std::uint32_t length, std::uint32_t address)
{
    return address >= base && address < base + length;
}

} // namespace

RegisterMap::RegisterMap(Bootstrap& bootstrap, Device& device,
                         std::vector<std::uint8_t> description)
    : mBootstrap(bootstrap), mDevice(device), mDescription(std::move(description))
{
    mDescription.resize((mDescription.size() + kRegisterSize - 1) / kRegisterSize * kRegisterSize);
}

GvcpStatus RegisterMap::read(std::uint32_t address, std::span<std::uint8_t> bytes) const
{
    for (std::size_t at = 0; at + kRegisterSize <= bytes.size(); at += kRegisterSize) {
        std::uint32_t value = 0;
        const Status status = readWord(address + static_cast<std::uint32_t>(at), value);
        if (status != Status::Success) {
            return status;
        }
        putU32(&bytes[at], value);
    }
    return Status::Success;
}

GvcpStatus RegisterMap::write(std::uint32_t address, std::span<const std::uint8_t> bytes,
                              const Endpoint& from, std::size_t& written)
{
    for (written = 0; written + kRegisterSize <= bytes.size(); written += kRegisterSize) {
        const std::uint32_t at = address + static_cast<std::uint32_t>(written);
        const Status status = writeWord(at, getU32(&bytes[written]), from);
        if (status != Status::Success) {
            return status;
        }
    }
    return Status::Success;
}

std::optional<FeatureId> RegisterMap::featureAt(std::uint32_t address)
{
    if (const auto own = indexIn(kFeatureRegisters, address)) {
        return registerOf(featureOf(*own)) == address ? own : std::nullopt;
    }
    const auto holds = [address](const Feature& feature) {
        return feature.address != 0 && isIn(feature.address, feature.length, address);
    };
    const auto row = std::ranges::find_if(featureTable(), holds);
    return row == featureTable().end() ? std::nullopt : std::optional{row->id};
}

GvcpStatus RegisterMap::readWord(std::uint32_t address, std::uint32_t& value) const
{
    std::optional<std::uint32_t> found;
    if (address < kManufacturerRegisters) {
        found = mBootstrap.read(address);
    } else if (indexIn(kFeatureRegisters, address)) {
        const auto feature = featureAt(address);
        return feature ? readFeature(*feature, value) : Status::InvalidAddress;
    } else if (const auto limited = indexIn(kMaximumRegisters, address)) {
        found = static_cast<std::uint32_t>(mDevice.limits(*limited).maximum);
    } else if (const auto conditional = indexIn(kAvailabilityRegisters, address)) {
        found = mDevice.isAvailable(*conditional) ? 1 : 0;
    } else if (address == kImagingRegister) {
        found = mDevice.isImaging() ? 1 : 0;
    } else {
        found = readBuffer(address);
    }
    value = found.value_or(0);
    return found ? Status::Success : Status::InvalidAddress;
}

GvcpStatus RegisterMap::readFeature(FeatureId id, std::uint32_t& value) const
{
    if (featureOf(id).access == Access::WriteOnly || !mDevice.isAvailable(id)) {
        return Status::AccessDenied;
    }
    value = static_cast<std::uint32_t>(mDevice.read(id));
    return Status::Success;
}

std::optional<std::uint32_t> RegisterMap::readBuffer(std::uint32_t address) const
{
    const auto word = [address](std::uint32_t base, std::span<const std::uint8_t> bytes) {
        return getU32(&bytes[address - base]);
    };
    if (isIn(kTransmitBuffer, kSerialBufferLength, address)) {
        return word(kTransmitBuffer, mDevice.transmitBuffer());
    }
    if (isIn(kReceiveBuffer, kSerialBufferLength, address)) {
        return word(kReceiveBuffer, mDevice.receiveBuffer());
    }
    if (isIn(kDestinationText, kDestinationTextLength, address)) {
        std::array<std::uint8_t, kDestinationTextLength> text{};
        putText(text, destinationText());
        return word(kDestinationText, text);
    }
    if (isIn(kDescriptionFile, static_cast<std::uint32_t>(mDescription.size()), address)) {
        return word(kDescriptionFile, mDescription);
    }
    return std::nullopt;
}

GvcpStatus RegisterMap::writeWord(std::uint32_t address, std::uint32_t value, const Endpoint& from)
{
    if (address < kManufacturerRegisters) {
        return mBootstrap.write(address, value, from);
    }
    if (indexIn(kFeatureRegisters, address)) {
        const auto feature = featureAt(address);
        return feature ? mDevice.write(*feature, value) : Status::InvalidAddress;
    }
    if (isIn(kTransmitBuffer, kSerialBufferLength, address)) {
        std::array<std::uint8_t, kRegisterSize> bytes{};
        putU32(bytes.data(), value);
        mDevice.writeTransmitBuffer(address - kTransmitBuffer, bytes);
        return Status::Success;
    }
    if (isIn(kDestinationText, kDestinationTextLength, address)) {
        return writeDestination(address, value);
    }
    std::uint32_t ignored = 0;
    return readWord(address, ignored) == Status::Success ? Status::WriteProtect
                                                         : Status::InvalidAddress;
}

GvcpStatus RegisterMap::writeDestination(std::uint32_t address, std::uint32_t value)
{
    // The text comes word by word; it counts when its last word is there.
    const std::uint32_t at = address - kDestinationText;
    putU32(&mDestinationDraft[at], value);
    if (at + kRegisterSize != kDestinationTextLength) {
        return Status::Success;
    }
    const auto parsed = gige::net::parseIpv4(getText(mDestinationDraft));
    if (!parsed) {
        return Status::InvalidParameter;
    }
    StreamChannel channel = mDevice.channel();
    channel.destination.address = *parsed;
    mDevice.setChannel(channel);
    return Status::Success;
}

std::string RegisterMap::destinationText() const
{
    return gige::net::toText(mDevice.channel().destination.address);
}

} // namespace camera
