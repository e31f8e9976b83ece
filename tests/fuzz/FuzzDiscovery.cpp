/// The list that a discovery makes of whatever arrives at its sockets. The input is a sequence of
/// records: 1 byte sender, 1 byte length, then that many bytes of datagram. A sender below 16 is
/// the address that the datagram names, 16 and above are 192.168.x.y; the interface is one of two.
#include "DiscoveryList.h"
#include "GvcpHeader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <set>

using namespace gige::control;
namespace net = gige::net;
namespace wire = gige::wire;

namespace
{

constexpr std::size_t kRecordHeader = 2;
constexpr std::size_t kAddressOffset = wire::kGvcpHeaderSize + 36; // of the device in its answer
constexpr std::uint32_t kNetwork = 0xC0A8'0000;                    // 192.168.0.0

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

net::NetworkInterface interfaceOf(std::uint8_t sender)
{
    const bool wide = sender % 2 == 0;
    return {.name = wide ? "wide" : "narrow",
            .address = {kNetwork + 1},
            .netmask = {wide ? 0xFFFF'0000 : 0xFFFF'FF00}};
}

HeardDatagram heard(std::uint8_t sender, wire::ByteView bytes)
{
    std::uint32_t address = kNetwork + sender;
    if (sender < 16 && bytes.size() >= kAddressOffset + 4) {
        address = wire::getU32(&bytes[kAddressOffset]);
    }
    return {.bytes = {bytes.begin(), bytes.end()},
            .source = {.address = {address}, .port = 3956},
            .nic = interfaceOf(sender)};
}

/// What has to hold of a list, told from all that came.
class Claims
{
  public:
    void note(const DiscoveredDevice& device)
    {
        mAddresses[device.info.mac].insert(device.ip().value);
    }

    void check(const std::vector<DiscoveredDevice>& devices) const
    {
        require(devices.size() == std::min(mAddresses.size(), kMostDevices));
        std::set<wire::MacAddress> macs;
        for (const DiscoveredDevice& device : devices) {
            require(macs.insert(device.info.mac).second);
            const auto& addresses = mAddresses.at(device.info.mac);
            require(addresses.contains(device.ip().value));
            require(device.hasRival == (addresses.size() > 1));
        }
    }

  private:
    std::map<wire::MacAddress, std::set<std::uint32_t>> mAddresses;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    DiscoveryList list;
    Claims claims;
    wire::ByteView rest(data, size);
    while (rest.size() >= kRecordHeader) {
        const std::size_t length = std::min<std::size_t>(rest[1], rest.size() - kRecordHeader);
        const HeardDatagram one = heard(rest[0], rest.subspan(kRecordHeader, length));
        rest = rest.subspan(kRecordHeader + length);
        if (const auto device = discoveredIn(one)) {
            require(device->ip() == one.source.address);
            claims.note(*device);
            const DiscoveredDevice* const known = list.add(*device);
            require(known == nullptr || known->info.mac == device->info.mac);
        }
    }
    claims.check(list.devices());
    return 0;
}
