#include "CameraChoice.h"
#include "Commands.h"
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

void runDiscover(const SearchOptions& options)
{
    const auto cameras = findCameras(options);
    if (cameras.empty()) {
        throw Failure("no camera answered");
    }
    std::vector<std::vector<std::string>> rows{
        {"MAC", "IP", "MANUFACTURER", "MODEL", "SERIAL", "NAME", "INTERFACE"}};
    for (const gige::control::DiscoveredDevice& camera : cameras) {
        rows.push_back({gige::wire::toText(camera.info.mac), gige::net::toText(camera.ip()),
                        camera.info.manufacturer, camera.info.model, camera.info.serialNumber,
                        camera.info.userDefinedName, camera.nic.name + remark(camera)});
    }
    std::cout << formatTable(rows);
}

} // namespace

void addDiscoverCommand(const Command& app)
{
    const Command command = app.add("discover", "List the cameras that answer");
    const auto options = std::make_shared<SearchOptions>();
    addSearchOptions(command, *options);
    command.onRun([options] { runDiscover(*options); });
}

} // namespace telvo
