// Who the camera is: its texts, and the host's questions for them by name.

#include "AsciiText.h"
#include "CQuorGrabber.h"
#include "LogText.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

namespace
{

constexpr std::int32_t kEmptyKey = -2;
constexpr std::int32_t kUnknownKey = -3;

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

void CQuorGrabber::readStreamAddresses()
{
    mIdentity.localIp = mStream.GetLocalIPAddress().GetAscii();
    readText(mFeatures, "GevSCDA", mIdentity.streamDestination);
}

void CQuorGrabber::readIdentity()
{
    readText(mFeatures, "DeviceUserID", mIdentity.userDefinedName);
    readText(mFeatures, "DeviceVendorName", mIdentity.manufacturer);
    readText(mFeatures, "DeviceModelName", mIdentity.model);
    readText(mFeatures, "DeviceID", mIdentity.serialNumber);
    readText(mFeatures, "DeviceVersion", mIdentity.gigeVersion);

    const std::int32_t bootloader = readNumber(mFeatures, "FirmwareVersionBootloader");
    const std::int32_t controller = readNumber(mFeatures, "FirmwareVersionController");
    const std::int32_t fpga = readNumber(mFeatures, "FirmwareVersionFPGA");
    const std::int32_t memory = readNumber(mFeatures, "RecordCameraBufferSize");
    logLine("Firmware versions: Bootloader %d, Controller %d, FPGA %d", bootloader, controller,
            fpga);
    // V is the controller's, as the camera's papers have it.
    std::array<char, FixedText::kSize> version{};
    std::snprintf(version.data(), version.size(), "B%s-F%s-V%s", versionText(bootloader).c_str(),
                  versionText(fpga).c_str(), versionText(controller).c_str());
    mIdentity.cameraVersion = version.data();
    mIdentity.memory = std::to_string(memory);
}

std::int32_t CQuorGrabber::getParam(const char* key, char* result, std::uint32_t resultSize) const
{
    const std::string_view wanted(key);
    if (wanted.empty()) {
        return kEmptyKey;
    }
    std::memset(result, 0, resultSize);
    for (const IdentityKey& entry : kKeys) {
        if (!selects(wanted, entry.name)) {
            continue;
        }
        if (entry.text != nullptr) {
            // Not bounded by the size: hosts pass at least 50 bytes whatever they say.
            const FixedText& text = mIdentity.*entry.text;
            std::memcpy(result, text.c_str(), std::strlen(text.c_str()) + 1);
        }
        return kSuccess;
    }
    return kUnknownKey;
}
