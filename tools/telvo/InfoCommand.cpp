#include "CameraChoice.h"
#include "Commands.h"
#include "Setting.h"
#include "TextTable.h"

#include "TelvoDll.h"

#include <array>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace telvo
{

namespace
{

using Rows = std::vector<std::vector<std::string>>;

struct IdentityText {
    const char* label;
    const char* key; // as the library names it
};

constexpr IdentityText kIdentity[] = {
    {"IP address", "ipAddress"},         {"local IP address", "ipAddressNIC"},
    {"stream goes to", "macAddressNIC"}, {"name", "cameraName"},
    {"manufacturer", "manufacturer"},    {"model", "model"},
    {"serial number", "serialNumber"},   {"GigE version", "gigeVersion"},
    {"camera version", "cameraVersion"}, {"memory", "memory"},
};

const char* yesOrNo(std::uint8_t value)
{
    return value != 0 ? "yes" : "no";
}

void addIdentity(const CameraSession& camera, Rows& rows)
{
    for (const IdentityText& text : kIdentity) {
        rows.push_back({text.label, camera.identity(text.key)});
    }
}

void addModel(const CameraSession& camera, Rows& rows)
{
    std::uint8_t cameraCase = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    const std::int32_t type = expGetUsedCameraType(&cameraCase, camera.id(), &width, &height);
    rows.push_back({"camera type", std::to_string(type) + ", case " + std::to_string(cameraCase)});
    rows.push_back({"sensor", std::to_string(width) + " x " + std::to_string(height) + " pixels"});

    std::uint32_t temperature = 0;
    expGetTemperature(&temperature, camera.id());
    rows.push_back({"temperature", std::to_string(temperature)});

    std::uint8_t isColor = 0;
    std::array<double, 3> factors{};
    expGetColorInformation(&isColor, &factors[0], &factors[1], &factors[2], camera.id());
    rows.push_back({"colour camera", yesOrNo(isColor)});
}

struct Ability {
    const char* label;
    std::int32_t (*isAvailable)(std::uint8_t* available, std::int32_t cameraId);
};

constexpr Ability kAbilities[] = {
    {"several sequences", expIsMultiSequenceModeAvailable},
    {"flash card", expIsFlashCardAvailable},
    {"record at power-on", expIsRecordAtPowerOnAvailable},
    {"IRIG-B", expIsIRIGBAvailable},
};

void addAbilities(const CameraSession& camera, Rows& rows)
{
    for (const Ability& ability : kAbilities) {
        std::uint8_t available = 0;
        ability.isAvailable(&available, camera.id()); // stays "no" where the camera lacks it
        rows.push_back({ability.label, yesOrNo(available)});
    }
}

void addMemory(const CameraSession& camera, Rows& rows)
{
    rows.push_back({"recording", camera.isRecording() ? "running" : "not running"});
    std::uint32_t frames = 0;
    expGetNumberOfAllRecordedFrames(&frames, camera.id());
    rows.push_back({"recorded frames", std::to_string(frames)});
    std::uint32_t perSequence = 0;
    if (expGetMaxFramesPerSequence(&perSequence, camera.id()) == 0) {
        rows.push_back({"frames that fit", std::to_string(perSequence) + " a sequence"});
    }
}

void runInfo(const CameraOptions& options)
{
    const CameraAddress address = chooseCamera(options);
    const CameraSession camera(address);
    Rows rows{{"MAC address", address.mac}};
    addIdentity(camera, rows);
    addModel(camera, rows);
    addAbilities(camera, rows);
    addMemory(camera, rows);
    std::cout << formatTable(rows) << '\n' << formatTable(settingRows(camera.id()));
}

} // namespace

void addInfoCommand(CLI::App& app)
{
    CLI::App* const command =
        app.add_subcommand("info", "Print what a camera is and how it is set");
    const auto options = std::make_shared<CameraOptions>();
    addCameraOptions(*command, *options);
    command->callback([options] { runInfo(*options); });
}

} // namespace telvo
