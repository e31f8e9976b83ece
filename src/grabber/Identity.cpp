#include "Identity.h"

#include "AsciiText.h"
#include "LogText.h"

#include <cstdio>
#include <string>

namespace
{

struct IdentityKey {
    std::string_view name;
    FixedText Identity::*text; ///< null: the answer is an empty text
};

// The first name that a host's key selects is meant, so the order of the rows counts.
constexpr IdentityKey kKeys[] = {
    {"ipAddress", &Identity::ipAddress},
    {"macAddress", &Identity::macAddress},
    {"ipAddressNIC", &Identity::localIp},
    {"macAddressNIC", &Identity::streamDestination}, // no MAC: hosts show what they get
    {"cameraName", &Identity::userDefinedName},
    {"manufacturer", &Identity::manufacturer},
    {"model", &Identity::model},
    {"serialNumber", &Identity::serialNumber},
    {"gigeVersion", &Identity::gigeVersion},
    {"cameraVersion", &Identity::cameraVersion},
    {"memory", &Identity::memory},
    {"ioValues", nullptr},
};

/// A camera without the feature leaves the text as it was.
void readText(const CameraFeatures& features, const char* name, FixedText& text)
{
    if (auto* const feature = features.find<PvGenString>(name)) {
        PvString value;
        (void)feature->GetValue(value);
        text = value.GetAscii();
    }
}

std::int32_t readNumber(const CameraFeatures& features, const char* name)
{
    auto* const feature = features.find<PvGenInteger>(name);
    std::int64_t value = 0;
    return feature != nullptr && feature->GetValue(value).IsOK() ? static_cast<std::int32_t>(value)
                                                                 : 0;
}

/// A firmware number in hundredths as text, always four characters: 10.00 becomes "10.0".
std::string versionText(std::int32_t hundredths)
{
    constexpr std::size_t kLength = 4;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.2f", hundredths / 100.0);
    return {text.data(), kLength};
}

} // namespace

void readStreamAddresses(Identity& identity, const CameraLink& link)
{
    identity.localIp = link.stream.GetLocalIPAddress().GetAscii();
    readText(link.features, "GevSCDA", identity.streamDestination);
}

void readIdentity(Identity& identity, const CameraFeatures& features)
{
    readText(features, "DeviceUserID", identity.userDefinedName);
    readText(features, "DeviceVendorName", identity.manufacturer);
    readText(features, "DeviceModelName", identity.model);
    readText(features, "DeviceID", identity.serialNumber);
    readText(features, "DeviceVersion", identity.gigeVersion);

    const std::int32_t bootloader = readNumber(features, "FirmwareVersionBootloader");
    const std::int32_t controller = readNumber(features, "FirmwareVersionController");
    const std::int32_t fpga = readNumber(features, "FirmwareVersionFPGA");
    const std::int32_t memory = readNumber(features, "RecordCameraBufferSize");
    logLine("Firmware versions: Bootloader %d, Controller %d, FPGA %d", bootloader, controller,
            fpga);
    // V is the controller's, as the camera's papers have it.
    std::array<char, FixedText::kSize> version{};
    std::snprintf(version.data(), version.size(), "B%s-F%s-V%s", versionText(bootloader).c_str(),
                  versionText(fpga).c_str(), versionText(controller).c_str());
    identity.cameraVersion = version.data();
    identity.memory = std::to_string(memory);
}

void setUserDefinedName(Identity& identity, const char* name)
{
    FixedText given;
    given = name;
    if (given != identity.userDefinedName) {
        identity.userDefinedName = given;
        identity.isUserDefinedNameChanged = true;
    }
}

void writeUserDefinedName(Identity& identity, const CameraFeatures& features)
{
    if (!identity.isUserDefinedNameChanged) {
        return;
    }
    identity.isUserDefinedNameChanged = false;
    if (auto* const feature = features.find<PvGenString>("DeviceUserID")) {
        (void)feature->SetValue(identity.userDefinedName.c_str());
    }
}

Param findParam(const Identity& identity, std::string_view key)
{
    if (key.empty()) {
        return {.result = Param::Result::EmptyKey};
    }
    const auto* const entry = std::ranges::find_if(
        kKeys, [key](const IdentityKey& row) { return selects(key, row.name); });
    if (entry == std::end(kKeys)) {
        return {.result = Param::Result::UnknownKey};
    }
    const bool hasText = entry->text != nullptr;
    return {.result = Param::Result::Found,
            .text = hasText ? (identity.*(entry->text)).c_str() : ""};
}
