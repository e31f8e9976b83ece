#include "NetworkInterface.h"

#include "SocketHandle.h"

#include <arpa/inet.h>
#include <cstring>
#include <ifaddrs.h>
#include <memory>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

namespace gige::net
{

namespace
{

Ipv4Address addressOf(const sockaddr* address)
{
    sockaddr_in ipv4{};
    std::memcpy(&ipv4, address, sizeof ipv4);
    return {ntohl(ipv4.sin_addr.s_addr)};
}

std::uint32_t mtuOf(const SocketHandle& socket, const std::string& name)
{
    ifreq request{};
    name.copy(request.ifr_name, IFNAMSIZ - 1);
    return ioctl(socket.get(), SIOCGIFMTU, &request) == 0
               ? static_cast<std::uint32_t>(request.ifr_mtu)
               : 0;
}

} // namespace

std::vector<NetworkInterface> networkInterfaces()
{
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) != 0) {
        return {};
    }
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> owner(list, &freeifaddrs);
    const SocketHandle socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    std::vector<NetworkInterface> interfaces;
    for (const ifaddrs* entry = list; entry != nullptr; entry = entry->ifa_next) {
        if (entry->ifa_addr == nullptr || entry->ifa_addr->sa_family != AF_INET ||
            entry->ifa_netmask == nullptr) {
            continue;
        }
        interfaces.push_back({.name = entry->ifa_name,
                              .address = addressOf(entry->ifa_addr),
                              .netmask = addressOf(entry->ifa_netmask),
                              .mtu = mtuOf(socket, entry->ifa_name),
                              .isLoopback = (entry->ifa_flags & IFF_LOOPBACK) != 0,
                              .isUp = (entry->ifa_flags & IFF_UP) != 0});
    }
    return interfaces;
}

} // namespace gige::net
