#include "DiscoveryList.h"

#include "ControlFixture.h"

#include <gtest/gtest.h>

namespace gige::control
{
namespace
{

net::NetworkInterface network()
{
    return {.name = "eth0",
            .address = {0xC0A80001},
            .netmask = {0xFFFFFF00},
            .mtu = 1500,
            .isLoopback = false,
            .isUp = true};
}

/// An answer in the standard's bytes: this MAC's last octet at this address.
wire::Bytes answer(std::uint8_t mac, std::uint32_t address)
{
    wire::Bytes bytes(8 + 248, 0);
    const wire::Bytes header{0, 0, 0, 3, 0, 248, 0xFF, 0xFF};
    std::ranges::copy(header, bytes.begin());
    bytes.at(8 + 10) = 0x02;
    bytes.at(8 + 15) = mac;
    for (std::size_t i = 0; i < 4; ++i) {
        bytes.at(8 + 36 + i) = static_cast<std::uint8_t>(address >> (24 - 8 * i));
    }
    return bytes;
}

std::optional<DiscoveredDevice> heard(std::uint8_t mac, std::uint32_t named, std::uint32_t source)
{
    return discoveredIn({.bytes = answer(mac, named),
                         .source = {.address = {source}, .port = 3956},
                         .nic = network()});
}

DiscoveredDevice device(std::uint64_t mac, std::uint32_t address,
                        const net::NetworkInterface& interface = network())
{
    DiscoveredDevice device{.info = {}, .nic = interface};
    for (std::uint8_t& byte : device.info.mac.bytes) {
        byte = static_cast<std::uint8_t>(mac);
        mac >>= 8;
    }
    device.info.address = address;
    return device;
}

TEST(DiscoveryAnswer, CountsFromTheAddressThatItNames)
{
    const auto found = heard(7, 0xC0A80005, 0xC0A80005);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->info.mac, (wire::MacAddress{{0x02, 0, 0, 0, 0, 7}}));
    EXPECT_EQ(found->ip(), net::Ipv4Address{0xC0A80005});
    EXPECT_EQ(found->nic.name, "eth0");
}

TEST(DiscoveryAnswer, FromAnotherAddressIsNone)
{
    EXPECT_FALSE(heard(7, 0xC0A80005, 0xC0A80006));
    EXPECT_FALSE(heard(7, 0, 0xC0A80006));
}

TEST(DiscoveryAnswer, OfADeviceWithoutAnAddressCounts)
{
    EXPECT_TRUE(heard(7, 0, 0)); // as it has none to send from either
}

TEST(DiscoveryList, ListsADeviceOnce)
{
    DiscoveryList list;
    const DiscoveredDevice* const news = list.add(device(1, 0xC0A80005));
    ASSERT_NE(news, nullptr);
    EXPECT_EQ(news->ip(), net::Ipv4Address{0xC0A80005});
    EXPECT_EQ(list.add(device(1, 0xC0A80005)), nullptr);
    EXPECT_EQ(list.devices().size(), 1U);
    EXPECT_FALSE(list.devices().front().hasRival);
}

TEST(DiscoveryList, PrefersTheInterfaceOfTheDevicesSubnet)
{
    net::NetworkInterface reaching = network();
    reaching.name = "eth1";
    reaching.address = {0x0A000001};
    DiscoveryList list;
    ASSERT_NE(list.add(device(1, 0x0A000005)), nullptr);
    EXPECT_FALSE(list.devices().front().inSubnet());
    const DiscoveredDevice* const news = list.add(device(1, 0x0A000005, reaching));
    ASSERT_NE(news, nullptr);
    EXPECT_EQ(news->nic.name, "eth1");
    EXPECT_EQ(list.add(device(1, 0x0A000005)), nullptr);
    EXPECT_EQ(list.devices().front().nic.name, "eth1");
}

TEST(DiscoveryList, TwoAddressesWithOneMacAreRivals)
{
    DiscoveryList list;
    ASSERT_NE(list.add(device(1, 0xC0A80005)), nullptr);
    ASSERT_NE(list.add(device(2, 0xC0A80007)), nullptr);
    const DiscoveredDevice* const news = list.add(device(1, 0xC0A80006));
    ASSERT_NE(news, nullptr);
    EXPECT_TRUE(news->hasRival);
    EXPECT_EQ(list.add(device(1, 0xC0A80006)), nullptr);
    EXPECT_EQ(list.add(device(1, 0xC0A80005)), nullptr);
    ASSERT_EQ(list.devices().size(), 2U);
    EXPECT_TRUE(list.devices()[0].hasRival);
    EXPECT_FALSE(list.devices()[1].hasRival);
}

TEST(DiscoveryList, TakesNoMoreThanItsLimit)
{
    DiscoveryList list;
    for (std::uint32_t i = 0; i < 1024; ++i) {
        ASSERT_NE(list.add(device(i, 0xC0A80000 + i)), nullptr);
    }
    EXPECT_EQ(list.add(device(5000, 0xC0A80001)), nullptr);
    EXPECT_EQ(list.devices().size(), 1024U);
    EXPECT_NE(list.add(device(3, 0xC0A80009)), nullptr) << "rivals are noticed all the same";
}

} // namespace
} // namespace gige::control
