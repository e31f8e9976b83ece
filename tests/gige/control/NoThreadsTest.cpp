// A system that has no thread left for us.

#include "ControlFixture.h"
#include "DeviceConnection.h"
#include "Discovery.h"
#include "WithoutThreads.h"

#include <gtest/gtest.h>
#include <optional>

namespace gige::control
{
namespace
{

using std::chrono::milliseconds;

TEST(WithoutThreads, NothingIsFound)
{
    ChildWithoutThreads child([] {
        constexpr wire::MacAddress kMac{{0x02, 0x54, 0x7F, 0, 2, 41}};
        return !findDevice(kMac, {loopback()}, milliseconds(200)) &&
               discover({loopback()}, milliseconds(200)).empty();
    });
    const FakeDevice device("127.0.2.41");
    EXPECT_EQ(child.run(), ChildWithoutThreads::Outcome::Holds);
}

TEST(WithoutThreads, OpeningAConnectionFailsAndLeavesTheDeviceFree)
{
    ChildWithoutThreads child([] {
        const LinkSettings settings;
        const auto opened = DeviceConnection::open({.ip = {0x7F000229}, .nic = loopback()},
                                                   AccessType::Exclusive, settings, [] {});
        return opened.status() == Status::NetworkError;
    });
    const FakeDevice device("127.0.2.41");
    EXPECT_EQ(child.run(), ChildWithoutThreads::Outcome::Holds);
    EXPECT_GE(device.count(kWriteRegisterCommand), 2U);
    EXPECT_EQ(device.registerValue(0x0A00), 0U);
}

} // namespace
} // namespace gige::control
