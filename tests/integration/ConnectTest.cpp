#include "DebugLog.h"
#include "Host.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace
{

using camera::FeatureId;
using camera::VirtualCamera;

std::ptrdiff_t count(const std::vector<std::string>& lines, const std::string& line)
{
    return std::count(lines.begin(), lines.end(), line);
}

TEST(Connect, FindsACameraByItsMacAddress)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    Host host;
    EXPECT_EQ(host.connect(camera), 0);
    EXPECT_EQ(lastWritten(camera, FeatureId::GevCCP), 1U); // exclusive
    EXPECT_EQ(host.disconnect(), 0);
    EXPECT_EQ(lastWritten(camera, FeatureId::GevCCP), 0U);
    EXPECT_EQ(host.disconnect(), -1);
}

TEST(Connect, TakesAMacAddressInCapitalsWithDashes)
{
    VirtualCamera camera(preparedCamera("127.0.0.171"));
    ASSERT_FALSE(camera.start());
    const TelvoConnectionSettings settings = fastSettings();
    EXPECT_EQ(expConnectGrabber("02-54-45-00-00-AB", "127.0.0.171", 1, &settings, 1), 0);
    EXPECT_EQ(expDisconnectGrabber(1), 0);
}

TEST(Connect, GivesUpOnAnUnknownMacAddressAfterSixAttempts)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    DebugLog log;
    const TelvoConnectionSettings settings = fastSettings();
    std::int32_t result = 0;
    const auto time = timeOf(
        [&] { result = expConnectGrabber("02:54:45:99:99:99", "127.0.0.11", 1, &settings, 1); });
    EXPECT_EQ(result, -1);
    EXPECT_GE(time, 1200ms); // six pauses of 200 ms
    EXPECT_LE(time, 10s);
    const auto lines = log.take();
    EXPECT_EQ(count(lines, "* MAC 02:54:45:99:99:99 IP 127.0.0.11"), 1);
    EXPECT_EQ(count(lines, "Camera contains a valid IP configuration!"), 6);
    EXPECT_EQ(expInitializeGrabber(&settings, 1), -1);
}

TEST(Connect, ConfiguresTheAddressWhenAsked)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    DebugLog log;
    const TelvoConnectionSettings settings = fastSettings();
    EXPECT_EQ(expConnectGrabber(camera.macText().c_str(), "127.0.0.11", 0, &settings, 1), 0);
    EXPECT_EQ(expDisconnectGrabber(1), 0);
    const auto lines = log.take();
    EXPECT_EQ(count(lines, "Set IP configuration to device!"), 1);
    EXPECT_EQ(count(lines, "- Serial com opened"), 1);
    EXPECT_EQ(count(lines, "Grabber disconnected!."), 1);
}

TEST(Connect, FailsWhileAnotherHostHoldsTheCamera)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    Host first(1);
    Host second(2);
    EXPECT_EQ(first.connect(camera), 0);
    EXPECT_EQ(second.connect(camera), -1);
    EXPECT_EQ(first.disconnect(), 0);
    EXPECT_EQ(second.connect(camera), 0);
}

TEST(Connect, SetsThePacketSizeOfTheSettings)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    Host host;
    ASSERT_EQ(host.connect(camera), 0);
    EXPECT_EQ(lastWritten(camera, FeatureId::GevSCPSPacketSize), 8000U);
    std::uint32_t size = 0;
    EXPECT_EQ(expGetPackageSize(&size, host.id()), 0);
    EXPECT_EQ(size, 8000U);
}

TEST(Connect, SetsTheDefaultPacketSizeWithoutSettings)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    Host host;
    ASSERT_EQ(host.connect(camera, defaultSettings()), 0);
    EXPECT_EQ(lastWritten(camera, FeatureId::GevSCPSPacketSize), 1440U);
}

TEST(Connect, NegotiatesThePacketSizeWhenItIsZero)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    TelvoConnectionSettings settings = fastSettings();
    settings.packetSize = 0;
    Host host;
    ASSERT_EQ(host.connect(camera, settings), 0);
    std::uint32_t size = 0;
    EXPECT_EQ(expGetPackageSize(&size, host.id()), 0);
    EXPECT_EQ(size, 9000U); // loopback would carry more
    EXPECT_GT(camera.log().counters().testPackets, 0U);
    EXPECT_EQ(host.initialize(settings), 0);
}

TEST(Connect, KeepsThePacketSizeOfACameraThatSendsNoTestPackets)
{
    VirtualCamera camera(preparedCamera());
    camera.faults().ignoreTestPackets(true);
    ASSERT_FALSE(camera.start());
    Host host;
    ASSERT_EQ(host.connect(camera), 0);
    EXPECT_EQ(host.disconnect(), 0);
    TelvoConnectionSettings settings = fastSettings();
    settings.packetSize = 0;
    ASSERT_EQ(host.connect(camera, settings), 0);
    std::uint32_t size = 0;
    EXPECT_EQ(expGetPackageSize(&size, host.id()), 0);
    EXPECT_EQ(size, 8000U);
}

TEST(Connect, ReportsACameraThatWritesItsFlashCard)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    camera.occupyFlash(60s);
    Host host;
    EXPECT_EQ(host.connect(camera), 1);
}

TEST(Connect, WorksWithoutASerialPort)
{
    camera::CameraOptions options = preparedCamera();
    options.missing = {FeatureId::SerialPort0TransmitBuffer};
    VirtualCamera camera(options);
    ASSERT_FALSE(camera.start());
    DebugLog log;
    Host host;
    EXPECT_EQ(host.connect(camera), 0);
    EXPECT_EQ(count(log.take(), "- Error open serial com"), 1);
}

TEST(Connect, ReadsAZippedDescription)
{
    for (const auto form :
         {camera::DescriptionForm::StoredZip, camera::DescriptionForm::DeflatedZip}) {
        camera::CameraOptions options = preparedCamera();
        options.description = form;
        VirtualCamera camera(options);
        ASSERT_FALSE(camera.start());
        Host host;
        EXPECT_EQ(host.connect(camera), 0);
    }
}

} // namespace
