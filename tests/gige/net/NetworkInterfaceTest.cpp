#include "NetworkInterface.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace gige::net;

namespace
{

TEST(NetworkInterface, LoopbackIsAmongThem)
{
    const auto interfaces = networkInterfaces();
    const auto loopback =
        std::ranges::find(interfaces, Ipv4Address{0x7F000001}, &NetworkInterface::address);
    ASSERT_NE(loopback, interfaces.end());
    EXPECT_TRUE(loopback->isLoopback);
    EXPECT_TRUE(loopback->isUp);
    EXPECT_FALSE(loopback->name.empty());
    EXPECT_EQ(loopback->netmask, Ipv4Address{0xFF000000});
    EXPECT_EQ(loopback->broadcast(), Ipv4Address{0x7FFFFFFF});
    EXPECT_GE(loopback->mtu, 1500U);
}

TEST(NetworkInterface, LoopbackReachesAllOfItsAddresses)
{
    for (const std::uint32_t address : {0x7F000001U, 0x7F00000BU, 0x7F010203U}) {
        const auto interface = interfaceReaching({address});
        ASSERT_TRUE(interface) << toText(Ipv4Address{address});
        EXPECT_TRUE(interface->isLoopback);
        EXPECT_EQ(interface->address, Ipv4Address{0x7F000001});
    }
}

TEST(NetworkInterface, BroadcastAndSubnetFollowFromTheMask)
{
    const NetworkInterface subnet{.address = {0xC0A80A14}, .netmask = {0xFFFFFF00}};
    EXPECT_EQ(subnet.broadcast(), Ipv4Address{0xC0A80AFF});
    EXPECT_TRUE(subnet.contains({0xC0A80A01}));
    EXPECT_FALSE(subnet.contains({0xC0A80B01}));
}

} // namespace
