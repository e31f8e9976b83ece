#include "CameraSearch.h"

#include "ToolError.h"

#include <algorithm>
#include <iterator>

namespace telvo
{

namespace control = gige::control;
namespace net = gige::net;

namespace
{

Interfaces usedInterfaces(const SearchOptions& options)
{
    const Interfaces all = control::usableInterfaces();
    return options.interfaceName.empty() ? all : selectInterfaces(all, options.interfaceName);
}

std::chrono::milliseconds timeOf(const SearchOptions& options)
{
    return std::chrono::milliseconds(options.timeout);
}

control::DiscoveredDevice onlyCamera(const SearchOptions& options)
{
    const auto found = findCameras(options);
    if (found.empty()) {
        throw Failure("no camera answered");
    }
    if (found.size() > 1) {
        throw UsageError(
            std::to_string(found.size()) +
            " cameras answered; choose one with --camera ('telvo discover' lists them)");
    }
    return found.front();
}

} // namespace

Interfaces selectInterfaces(const Interfaces& all, const std::string& nameOrAddress)
{
    Interfaces selected;
    std::ranges::copy_if(all, std::back_inserter(selected), [&](const net::NetworkInterface& each) {
        return each.name == nameOrAddress || net::toText(each.address) == nameOrAddress;
    });
    if (selected.empty()) {
        throw UsageError("there is no network interface '" + nameOrAddress + "' that is up");
    }
    return selected;
}

Interfaces interfacesFor(const Interfaces& all, std::string_view camera)
{
    const auto address = net::parseIpv4(camera);
    Interfaces loopback;
    if (address) {
        std::ranges::copy_if(all, std::back_inserter(loopback),
                             [&](const net::NetworkInterface& each) {
                                 return each.isLoopback && each.contains(*address);
                             });
    }
    return loopback.empty() ? all : loopback;
}

bool isCalled(const control::DiscoveredDevice& device, std::string_view camera)
{
    if (const auto address = net::parseIpv4(camera)) {
        return device.ip() == *address;
    }
    if (const auto mac = gige::wire::parseMac(camera)) {
        return device.info.mac == *mac;
    }
    return !camera.empty() && device.info.userDefinedName == camera;
}

std::vector<control::DiscoveredDevice> findCameras(const SearchOptions& options)
{
    return control::discover(usedInterfaces(options), timeOf(options));
}

control::DiscoveredDevice findCamera(const SearchOptions& options, const std::string& camera)
{
    if (camera.empty()) {
        return onlyCamera(options);
    }
    std::optional<control::DiscoveredDevice> wanted;
    control::discover(interfacesFor(usedInterfaces(options), camera), timeOf(options),
                      [&](const control::DiscoveredDevice& device) {
                          if (isCalled(device, camera)) {
                              wanted = device;
                          }
                          return !wanted; // the first answer is enough
                      });
    if (!wanted) {
        throw Failure("no camera '" + camera + "' answered");
    }
    return *wanted;
}

} // namespace telvo
