#include "CameraSearch.h"
#include "ToolError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace telvo;

const gige::net::NetworkInterface kLoopback{.name = "lo",
                                            .address = {0x7F000001},
                                            .netmask = {0xFF000000},
                                            .mtu = 65536,
                                            .isLoopback = true,
                                            .isUp = true};
const gige::net::NetworkInterface kSearched{.name = "eth7",
                                            .address = {0x0A000005},
                                            .netmask = {0xFFFFFF00},
                                            .mtu = 1500,
                                            .isLoopback = false,
                                            .isUp = true};
const Interfaces kBoth{kLoopback, kSearched};

std::vector<std::string> names(const Interfaces& interfaces)
{
    std::vector<std::string> result;
    for (const gige::net::NetworkInterface& each : interfaces) {
        result.push_back(each.name);
    }
    return result;
}

gige::control::DiscoveredDevice camera()
{
    gige::control::DiscoveredDevice device{.info = {}, .nic = kLoopback};
    device.info.mac = {{0x02, 0x54, 0x45, 0x00, 0x00, 0x21}};
    device.info.address = 0x7F00000B;
    device.info.userDefinedName = "north";
    return device;
}

TEST(SelectInterfaces, TakesANameOrAnAddress)
{
    EXPECT_THAT(names(selectInterfaces(kBoth, "lo")), testing::ElementsAre("lo"));
    EXPECT_THAT(names(selectInterfaces(kBoth, "10.0.0.5")), testing::ElementsAre("eth7"));
}

TEST(SelectInterfaces, RefusesAnUnknownOne)
{
    EXPECT_THROW(selectInterfaces(kBoth, "eth8"), UsageError);
}

TEST(InterfacesFor, KeepsALoopbackAddressOnLoopback)
{
    EXPECT_THAT(names(interfacesFor(kBoth, "127.0.0.11")), testing::ElementsAre("lo"));
}

TEST(InterfacesFor, LooksEverywhereForTheRest)
{
    for (const char* text : {"10.0.0.7", "02:54:45:00:00:21", "north"}) {
        EXPECT_THAT(names(interfacesFor(kBoth, text)), testing::ElementsAre("lo", "eth7")) << text;
    }
}

TEST(IsCalled, KnowsACameraByItsAddressesAndItsName)
{
    EXPECT_TRUE(isCalled(camera(), "127.0.0.11"));
    EXPECT_TRUE(isCalled(camera(), "02-54-45-00-00-21"));
    EXPECT_TRUE(isCalled(camera(), "north"));
}

TEST(IsCalled, TellsOtherCamerasApart)
{
    EXPECT_FALSE(isCalled(camera(), "127.0.0.12"));
    EXPECT_FALSE(isCalled(camera(), "02:54:45:00:00:22"));
    EXPECT_FALSE(isCalled(camera(), "nort"));
    EXPECT_FALSE(isCalled({}, ""));
}

} // namespace
