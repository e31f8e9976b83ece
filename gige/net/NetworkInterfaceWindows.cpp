#include "NetworkInterface.h"

#include "WinsockRuntime.h"

#include <iphlpapi.h>

namespace gige::net
{

namespace
{

constexpr ULONG kFlags = GAA_FLAG_SKIP_ANYCAST | GAA_FLAG_SKIP_MULTICAST | GAA_FLAG_SKIP_DNS_SERVER;
constexpr ULONG kFirstGuess = 32 * 1024; // bytes
constexpr int kAttempts = 3;             // the list may grow between two calls

Ipv4Address prefixMask(unsigned length)
{
    return {length == 0 ? 0 : 0xFFFFFFFFU << (32 - length)};
}

std::string utf8(const wchar_t* text)
{
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 1) {
        return {};
    }
    std::string result(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, result.data(), size, nullptr, nullptr);
    result.pop_back(); // the NUL
    return result;
}

/// Memory aligned for the adapters' list; empty on failure.
std::vector<std::uint64_t> adapterList()
{
    ULONG size = kFirstGuess;
    for (int i = 0; i < kAttempts; ++i) {
        std::vector<std::uint64_t> memory(size / sizeof(std::uint64_t) + 1);
        const ULONG result =
            GetAdaptersAddresses(AF_INET, kFlags, nullptr,
                                 reinterpret_cast<IP_ADAPTER_ADDRESSES*>(memory.data()), &size);
        if (result == NO_ERROR) {
            return memory;
        }
        if (result != ERROR_BUFFER_OVERFLOW) {
            break;
        }
    }
    return {};
}

} // namespace

std::vector<NetworkInterface> networkInterfaces()
{
    startWinsock();
    const std::vector<std::uint64_t> memory = adapterList();
    std::vector<NetworkInterface> interfaces;
    if (memory.empty()) {
        return interfaces;
    }
    for (auto* adapter = reinterpret_cast<const IP_ADAPTER_ADDRESSES*>(memory.data());
         adapter != nullptr; adapter = adapter->Next) {
        for (auto* unicast = adapter->FirstUnicastAddress; unicast != nullptr;
             unicast = unicast->Next) {
            const auto* const ipv4 =
                reinterpret_cast<const sockaddr_in*>(unicast->Address.lpSockaddr);
            interfaces.push_back({.name = utf8(adapter->FriendlyName),
                                  .address = {ntohl(ipv4->sin_addr.s_addr)},
                                  .netmask = prefixMask(unicast->OnLinkPrefixLength),
                                  .mtu = adapter->Mtu,
                                  .isLoopback = adapter->IfType == IF_TYPE_SOFTWARE_LOOPBACK,
                                  .isUp = adapter->OperStatus == IfOperStatusUp});
        }
    }
    return interfaces;
}

} // namespace gige::net
