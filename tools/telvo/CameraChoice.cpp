#include "CameraChoice.h"

#include "OptionRange.h"
#include "ToolError.h"

namespace telvo
{

namespace
{

constexpr std::uint32_t kLongestTimeout = 60'000; // milliseconds

} // namespace

void addSearchOptions(CLI::App& command, SearchOptions& options)
{
    command
        .add_option("--interface", options.interfaceName,
                    "Network interface to look on [every one that is up]")
        ->type_name("NAME|ADDRESS");
    command.add_option("--timeout", options.timeout, "How long to wait for answers, 1 to 60000 ms")
        ->type_name("MS")
        ->check(inRange(1, kLongestTimeout))
        ->capture_default_str();
}

void addCameraOptions(CLI::App& command, CameraOptions& options)
{
    command.add_option("--camera", options.camera, "The camera [the only one that answers]")
        ->type_name("MAC|IP|NAME");
    addSearchOptions(command, options.search);
}

CameraAddress chooseCamera(const CameraOptions& options)
{
    const gige::control::DiscoveredDevice device = findCamera(options.search, options.camera);
    const std::string ip = gige::net::toText(device.ip());
    if (!device.inSubnet()) {
        throw Failure("the camera's address " + ip + " is not in the subnet of interface " +
                      device.interface.name);
    }
    return {.mac = gige::wire::toText(device.info.mac),
            .ip = ip,
            .onLoopback = device.interface.isLoopback};
}

} // namespace telvo
