#include "CameraSearch.h"

#include "CancelFlag.h"
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

using Devices = std::vector<control::DiscoveredDevice>;

Devices ask(const Interfaces& interfaces, const SearchOptions& options,
            const control::DeviceFound& found = nullptr)
{
    const CancelToken cancel;
    Devices devices = control::discover(interfaces, timeOf(options), found, cancel.token());
    CancelFlag().check();
    return devices;
}

/// "127.0.0.11 (serial number VC00000B), 127.0.0.12 (…)"
std::string listOf(const Devices& devices)
{
    std::string text;
    for (const control::DiscoveredDevice& device : devices) {
        text += (text.empty() ? "" : ", ") + net::toText(device.ip());
        if (!device.info.serialNumber.empty()) {
            text += " (serial number " + device.info.serialNumber + ')';
        }
    }
    return text;
}

control::DiscoveredDevice onlyOne(const Devices& found, const std::string& none,
                                  const std::string& several)
{
    if (found.empty()) {
        throw Failure(none);
    }
    if (found.size() > 1) {
        throw UsageError(several + ": " + listOf(found));
    }
    return found.front();
}

control::DiscoveredDevice onlyCamera(const SearchOptions& options)
{
    const Devices found = findCameras(options);
    return onlyOne(found, "no camera answered; 'telvo doctor' looks for the reason",
                   std::to_string(found.size()) + " cameras answered; choose one with --camera");
}

std::string namesOf(const Interfaces& interfaces)
{
    std::string text;
    for (const net::NetworkInterface& each : interfaces) {
        text += (text.empty() ? "" : ", ") + each.name + " (" + net::toText(each.address) + ')';
    }
    return text.empty() ? "none" : text;
}

bool isAddress(std::string_view camera)
{
    return net::parseIpv4(camera) || gige::wire::parseMac(camera);
}

} // namespace

Interfaces selectInterfaces(const Interfaces& all, const std::string& nameOrAddress)
{
    Interfaces selected;
    std::ranges::copy_if(all, std::back_inserter(selected), [&](const net::NetworkInterface& each) {
        return each.name == nameOrAddress || net::toText(each.address) == nameOrAddress;
    });
    if (selected.empty()) {
        throw UsageError("there is no network interface '" + nameOrAddress +
                         "' that is up; there are: " + namesOf(all));
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
    return !camera.empty() &&
           (device.info.userDefinedName == camera || device.info.serialNumber == camera);
}

std::vector<control::DiscoveredDevice> findCameras(const SearchOptions& options)
{
    return ask(usedInterfaces(options), options);
}

control::DiscoveredDevice findCamera(const SearchOptions& options, const std::string& camera)
{
    if (camera.empty()) {
        return onlyCamera(options);
    }
    const bool isUnique = isAddress(camera); // then the first answer is enough
    Devices all = ask(interfacesFor(usedInterfaces(options), camera), options,
                      [&](const control::DiscoveredDevice& device) {
                          return !(isUnique && isCalled(device, camera));
                      });
    std::erase_if(
        all, [&](const control::DiscoveredDevice& device) { return !isCalled(device, camera); });
    return onlyOne(all, "no camera '" + camera + "' answered; 'telvo discover' lists those that do",
                   std::to_string(all.size()) + " cameras are called '" + camera +
                       "'; choose one by its address");
}

} // namespace telvo
