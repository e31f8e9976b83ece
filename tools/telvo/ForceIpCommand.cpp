#include "CameraChoice.h"
#include "Commands.h"
#include "Json.h"
#include "ToolError.h"

#include "ForceIp.h"

#include <iostream>
#include <memory>
#include <string>

namespace telvo
{

namespace
{

namespace control = gige::control;
namespace net = gige::net;

struct ForceIpOptions {
    CameraOptions camera;
    std::string address;
    std::string mask = "255.255.255.0";
    std::string gateway = "0.0.0.0";
    bool json = false;
};

net::Ipv4Address parseAddress(const std::string& text)
{
    const auto address = net::parseIpv4(text);
    if (!address) {
        throw UsageError("'" + text + "' is no IPv4 address such as 192.168.0.10");
    }
    return *address;
}

std::string reasonOf(control::Status status)
{
    if (status == control::Status::Timeout) {
        return "it does not answer under it; is it taken, or in another subnet?";
    }
    return isDeviceError(status) ? "it refuses; is a program using it?"
                                 : "nothing can be sent; is the network up?";
}

void runForceIp(const ForceIpOptions& options)
{
    const net::Ipv4Address address = parseAddress(options.address);
    const net::Ipv4Address mask = parseAddress(options.mask);
    const net::Ipv4Address gateway = parseAddress(options.gateway);
    const control::DiscoveredDevice device =
        findCamera(options.camera.search, options.camera.camera);
    const control::Status result = control::forceIp({.mac = device.info.mac,
                                                     .address = address.value,
                                                     .subnetMask = mask.value,
                                                     .gateway = gateway.value},
                                                    control::usableInterfaces());
    if (result != control::Status::Ok) {
        throw Failure("the camera does not take " + options.address + ": " + reasonOf(result));
    }
    const std::string mac = gige::wire::toText(device.info.mac);
    if (options.json) {
        printJson({{"mac", mac},
                   {"ip", options.address},
                   {"mask", options.mask},
                   {"gateway", options.gateway}});
    } else {
        std::cout << mac << " has " << options.address << " until its power-off\n";
    }
}

} // namespace

void addForceIpCommand(const Command& app)
{
    const Command command = app.add("force-ip", "Give a camera an IP address until its power-off");
    const auto options = std::make_shared<ForceIpOptions>();
    addCameraOptions(command, options->camera);
    command.option("address", options->address, "The new address").required().type("IP");
    command.option("--mask", options->mask, "Subnet mask").type("IP").showDefault();
    command.option("--gateway", options->gateway, "Gateway").type("IP").showDefault();
    addJsonOption(command, options->json);
    command.footer("Works with a camera in another subnet, too, which other commands cannot "
                   "reach.");
    command.onRun([options] { runForceIp(*options); });
}

} // namespace telvo
