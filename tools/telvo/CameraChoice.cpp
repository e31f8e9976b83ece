#include "CameraChoice.h"

#include "ToolError.h"

#include <algorithm>
#include <utility>

namespace telvo
{

namespace
{

constexpr std::uint32_t kLongestTimeout = 60'000; // milliseconds

CameraOptions usualOptions; // what options are before the command line gives others

} // namespace

void addSearchOptions(const Command& command, SearchOptions& options)
{
    options = usualOptions.search;
    command
        .option("--interface", options.interfaceName,
                "Network interface to look on [every one that is up]")
        .type("NAME|ADDRESS");
    command.option("--timeout", options.timeout, "How long to wait for answers, 1 to 60000 ms")
        .type("MS")
        .within(1U, kLongestTimeout)
        .showDefault();
}

void addCameraOptions(const Command& command, CameraOptions& options)
{
    options.camera = usualOptions.camera;
    command.option("--camera", options.camera, "The camera [the only one that answers]")
        .type("MAC|IP|NAME|SERIAL");
    addSearchOptions(command, options.search);
}

void addCamerasOptions(const Command& command, CamerasOptions& options)
{
    if (!usualOptions.camera.empty()) {
        options.cameras = {usualOptions.camera};
    }
    command
        .option("--camera", options.cameras,
                "The camera [the only one that answers]; once for each of several")
        .type("MAC|IP|NAME|SERIAL")
        .repeated();
    addSearchOptions(command, options.search);
}

UsualCamera::UsualCamera(const CameraOptions& options)
{
    usualOptions = options;
}

UsualCamera::~UsualCamera()
{
    usualOptions = {};
}

CameraAddress addressOf(const gige::control::DiscoveredDevice& device)
{
    return {.mac = gige::wire::toText(device.info.mac),
            .ip = gige::net::toText(device.ip()),
            .onLoopback = device.nic.isLoopback,
            .device = device};
}

CameraAddress chooseCamera(const CameraOptions& options)
{
    const gige::control::DiscoveredDevice device = findCamera(options.search, options.camera);
    if (!device.inSubnet()) {
        throw Failure("the camera's address " + gige::net::toText(device.ip()) +
                      " is not in the subnet of interface " + device.nic.name +
                      "; 'telvo force-ip' gives it another");
    }
    return addressOf(device);
}

std::vector<CameraAddress> chooseCameras(const CamerasOptions& options)
{
    std::vector<std::string> names = options.cameras;
    if (names.empty()) {
        names.emplace_back();
    }
    std::vector<CameraAddress> cameras;
    for (const std::string& name : names) {
        CameraAddress camera = chooseCamera({.camera = name, .search = options.search});
        if (std::ranges::find(cameras, camera.ip, &CameraAddress::ip) != cameras.end()) {
            throw UsageError("--camera " + name + " names " + camera.ip +
                             " once more; name each camera once");
        }
        cameras.push_back(std::move(camera));
    }
    return cameras;
}

} // namespace telvo
