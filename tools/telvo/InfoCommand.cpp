#include "CameraChoice.h"
#include "Commands.h"
#include "Json.h"
#include "SettingReader.h"
#include "StateReport.h"
#include "TextTable.h"

#include <array>
#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>

namespace telvo
{

namespace
{

struct InfoOptions {
    CameraOptions camera;
    bool json = false;
};

struct InfoRow {
    const char* label;
    const char* key;
    const char* feature;
};

constexpr InfoRow kNumbers[] = {
    {"sensor width", "sensorWidth", "SensorWidth"},
    {"sensor height", "sensorHeight", "SensorHeight"},
    {"memory", "memory", "RecordCameraBufferSize"},
    {"temperature", "temperature", "Temperature"},
};

constexpr InfoRow kAbilities[] = {
    {"several sequences", "severalSequences", "MultisequenceAvailable"},
    {"flash card", "flashCard", "FlashCardAvailable"},
    {"IRIG-B", "irigB", "IRIGBAvailable"},
};

Facts identityOf(const CameraAddress& camera)
{
    const gige::wire::DiscoveryAck& info = camera.device.info;
    return {
        {"MAC address", "mac", camera.mac},
        {"IP address", "ip", camera.ip},
        {"on interface", "interface", camera.device.nic.name},
        {"name", "name", info.userDefinedName},
        {"manufacturer", "manufacturer", info.manufacturer},
        {"model", "model", info.model},
        {"serial number", "serialNumber", info.serialNumber},
        {"device version", "deviceVersion", info.deviceVersion},
    };
}

/// "3.05" for 305; "?" where the camera does not tell.
std::string versionText(const std::optional<std::int64_t>& hundredths)
{
    std::ostringstream text;
    if (hundredths) {
        text << std::fixed << std::setprecision(2) << static_cast<double>(*hundredths) / 100;
    }
    return hundredths ? text.str() : "?";
}

void addFirmware(const CameraLook& look, Facts& facts)
{
    const auto version = [&](const char* part) {
        return versionText(look.integer(std::string("FirmwareVersion") + part));
    };
    facts.push_back({"firmware", "firmware",
                     "bootloader " + version("Bootloader") + ", FPGA " + version("FPGA") +
                         ", controller " + version("Controller")});
}

void addNumbers(const CameraLook& look, Facts& facts)
{
    for (const InfoRow& number : kNumbers) {
        if (const auto value = look.integer(number.feature)) {
            facts.push_back(
                {number.label, number.key, *value, look.find(number.feature)->info().unit});
        }
    }
}

void addAbilities(const CameraLook& look, Facts& facts)
{
    for (const InfoRow& ability : kAbilities) {
        facts.push_back({ability.label, ability.key, look.flag(ability.feature).value_or(false)});
    }
    if (const auto format = look.text("PixelFormat")) {
        facts.push_back({"pixels", "pixelFormat", *format});
    }
}

Facts factsOf(const CameraAddress& camera, const CameraLook& look)
{
    Facts facts = identityOf(camera);
    addFirmware(look, facts);
    addNumbers(look, facts);
    addAbilities(look, facts);
    const Facts state = stateOf(look);
    facts.insert(facts.end(), state.begin(), state.end());
    return facts;
}

void runInfo(const InfoOptions& options)
{
    const CameraAddress camera = chooseCamera(options.camera);
    const CameraLook look = lookAt(camera);
    const Facts facts = factsOf(camera, look);
    const ReadSetting read = [&look](const Setting& setting) {
        return lookAtSetting(look, setting);
    };
    if (options.json) {
        Json json = jsonOf(facts);
        json["settings"] = settingsJson(everySetting(), read);
        printJson(json);
    } else {
        std::cout << formatTable(rowsOf(facts)) << '\n' << formatTable(settingRows(read));
    }
}

} // namespace

void addInfoCommand(const Command& app)
{
    const Command command = app.add("info", "Print what a camera is and how it is set");
    const auto options = std::make_shared<InfoOptions>();
    addCameraOptions(command, options->camera);
    addJsonOption(command, options->json);
    command.footer("It changes nothing in the camera.");
    command.onRun([options] { runInfo(*options); });
}

} // namespace telvo
