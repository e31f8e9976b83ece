#include "CameraChoice.h"
#include "Commands.h"
#include "Json.h"
#include "TextTable.h"
#include "ToolError.h"

#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace telvo
{

namespace
{

/// Why a camera cannot be connected to as it is; empty if it can.
std::string remark(const gige::control::DiscoveredDevice& camera)
{
    if (camera.hasRival) {
        return " (MAC conflict)";
    }
    return camera.inSubnet() ? "" : " (other subnet)";
}

struct DiscoverOptions {
    SearchOptions search;
    bool json = false;
};

Json jsonOf(const gige::control::DiscoveredDevice& camera)
{
    return {{"mac", gige::wire::toText(camera.info.mac)},
            {"ip", gige::net::toText(camera.ip())},
            {"manufacturer", camera.info.manufacturer},
            {"model", camera.info.model},
            {"serial", camera.info.serialNumber},
            {"name", camera.info.userDefinedName},
            {"interface", camera.nic.name},
            {"inSubnet", camera.inSubnet()},
            {"macConflict", camera.hasRival}};
}

void print(const std::vector<gige::control::DiscoveredDevice>& cameras)
{
    std::vector<std::vector<std::string>> rows{
        {"MAC", "IP", "MANUFACTURER", "MODEL", "SERIAL", "NAME", "INTERFACE"}};
    for (const gige::control::DiscoveredDevice& camera : cameras) {
        rows.push_back({gige::wire::toText(camera.info.mac), gige::net::toText(camera.ip()),
                        camera.info.manufacturer, camera.info.model, camera.info.serialNumber,
                        camera.info.userDefinedName, camera.nic.name + remark(camera)});
    }
    std::cout << formatTable(rows);
}

void printAsJson(const std::vector<gige::control::DiscoveredDevice>& cameras)
{
    Json json = Json::array();
    for (const gige::control::DiscoveredDevice& camera : cameras) {
        json.push_back(jsonOf(camera));
    }
    printJson(json);
}

void runDiscover(const DiscoverOptions& options)
{
    const auto cameras = findCameras(options.search);
    if (options.json) {
        printAsJson(cameras);
    }
    if (cameras.empty()) {
        throw Failure("no camera answered; 'telvo doctor' says what to look at");
    }
    if (!options.json) {
        print(cameras);
    }
}

} // namespace

void addDiscoverCommand(const Command& app)
{
    const Command command = app.add("discover", "List the cameras that answer");
    const auto options = std::make_shared<DiscoverOptions>();
    addSearchOptions(command, options->search);
    addJsonOption(command, options->json);
    command.onRun([options] { runDiscover(*options); });
}

} // namespace telvo
