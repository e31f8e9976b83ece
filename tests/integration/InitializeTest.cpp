#include "Host.h"

#include <array>
#include <cstring>
#include <gtest/gtest.h>

namespace
{

using camera::FeatureId;
using camera::VirtualCamera;

std::string param(const char* key, const Host& host)
{
    std::array<char, 50> text{};
    const std::uint32_t size = text.size();
    EXPECT_EQ(expGetParam(key, text.data(), &size, host.id()), 0);
    return text.data();
}

TEST(Initialize, LeavesThePreparedCameraInPlayback)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    Host host;
    ASSERT_EQ(host.connect(camera), 0);
    EXPECT_EQ(host.initialize(), 0);
    EXPECT_EQ(expStopLiveMode(host.id()), -1); // playback is not stopped by a stop
}

TEST(Initialize, PreparesTheUserSetsOfAFreshCameraOnce)
{
    camera::CameraOptions options = preparedCamera();
    options.userSetsPrepared = false;
    VirtualCamera camera(options);
    ASSERT_FALSE(camera.start());
    Host host;
    ASSERT_EQ(host.connect(camera), 0);
    EXPECT_EQ(host.initialize(), -2);
    EXPECT_EQ(host.disconnect(), 0);
    ASSERT_EQ(host.connect(camera), 0);
    EXPECT_EQ(host.initialize(), 0);
    EXPECT_EQ(camera.value(FeatureId::Width), camera.value(FeatureId::SensorWidth));
    EXPECT_EQ(camera.value(FeatureId::Height), camera.value(FeatureId::SensorHeight));
}

TEST(Initialize, AttachesToARunningRecording)
{
    camera::CameraOptions options = preparedCamera();
    options.recordAtPowerOn = true;
    options.settings = {{FeatureId::Width, 64}, {FeatureId::Height, 64}};
    VirtualCamera camera(options);
    ASSERT_FALSE(camera.start());
    Host host;
    ASSERT_EQ(host.connect(camera), 0);
    EXPECT_EQ(host.initialize(), 1);
    EXPECT_EQ(camera.value(FeatureId::CameraState), 2); // still recording
    EXPECT_EQ(expStopRecordMode(host.id()), 0);
}

TEST(Initialize, FailsOnceTheLinkIsLost)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    TelvoConnectionSettings settings = fastSettings();
    Host host;
    ASSERT_EQ(host.connect(camera, settings), 0);
    camera.faults().setSilent(true);
    ASSERT_TRUE(eventually([&] { return expInitializeGrabber(&settings, host.id()) == -1; }, 20s));
}

TEST(Initialize, AppliesTheLinkSettings)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    TelvoConnectionSettings settings = fastSettings();
    settings.defaultInterPacketDelay = 40;
    settings.outputDataRate = 7;
    settings.heartbeatTimeout = 2500;
    settings.maximumPendingResends = 99;
    Host host;
    host.open(camera, settings);
    EXPECT_EQ(lastWritten(camera, FeatureId::GevSCPD), 40U);
    EXPECT_EQ(camera.value(FeatureId::InternalDataRate), 7);
    EXPECT_EQ(lastWritten(camera, FeatureId::GevHeartbeatTimeout), 2500U);
    std::uint32_t value = 0;
    EXPECT_EQ(expGetStreamParam("MaximumPendingResends", &value, host.id()), 0);
    EXPECT_EQ(value, 99U);
}

TEST(Initialize, AppliesTheDefaultsWithoutSettings)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera, defaultSettings());
    EXPECT_EQ(lastWritten(camera, FeatureId::GevSCPD), 2000U);
    EXPECT_EQ(camera.value(FeatureId::InternalDataRate), 3);
    std::uint32_t value = 0;
    EXPECT_EQ(expGetStreamParam("RequestTimeout", &value, host.id()), 0);
    EXPECT_EQ(value, 1100U);
}

TEST(Initialize, ReadsTheIdentity)
{
    camera::CameraOptions options = preparedCamera();
    options.model = "Fenrow 4";
    options.serial = "SN-42";
    options.userName = "left camera";
    VirtualCamera camera(options);
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera);
    EXPECT_EQ(param("ipAddress", host), "127.0.0.11");
    EXPECT_EQ(param("MACADDRESS", host), camera.macText());
    EXPECT_EQ(param("ipAddressNIC", host), "127.0.0.1");
    EXPECT_EQ(param("macAddressNIC", host), "127.0.0.1"); // the stream's destination
    EXPECT_EQ(param("cameraName", host), "left camera");
    EXPECT_EQ(param("manufacturer", host), "Telvo");
    EXPECT_EQ(param("model", host), "Fenrow 4");
    EXPECT_EQ(param("serialNumber", host), "SN-42");
    EXPECT_NE(param("memory", host), "0");
    std::uint8_t caseFlag = 9;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    EXPECT_EQ(expGetUsedCameraType(&caseFlag, host.id(), &width, &height), 1);
    EXPECT_EQ(caseFlag, 1);
    EXPECT_EQ(width, camera.value(FeatureId::SensorWidth));
    EXPECT_EQ(height, camera.value(FeatureId::SensorHeight));
}

TEST(Initialize, WritesAChangedNameAtDisconnect)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera);
    EXPECT_EQ(expSetUserDefinedName("new name", host.id()), 0);
    EXPECT_EQ(host.disconnect(), 0);
    host.open(camera);
    EXPECT_EQ(param("cameraName", host), "new name");
}

TEST(Initialize, DetectsAColourCameraAndItsFactors)
{
    camera::CameraOptions options = preparedCamera();
    options.colour = true;
    options.settings = {
        {FeatureId::Data00, 250}, {FeatureId::Data01, 700}, {FeatureId::Data02, 100}};
    VirtualCamera camera(options);
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera);
    std::uint8_t isColour = 0;
    double first = 0;
    double second = 0;
    double third = 9;
    EXPECT_EQ(expGetColorInformation(&isColour, &first, &second, &third, host.id()), 0);
    EXPECT_EQ(isColour, 1);
    EXPECT_DOUBLE_EQ(first, 1.5);
    EXPECT_DOUBLE_EQ(second, 1.0); // 6.0 is out of range
    EXPECT_DOUBLE_EQ(third, 0.0);
}

TEST(Serial, CarriesBytesToTheCameraAndBack)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera);
    const char command[] = ":GW07b000000000";
    EXPECT_EQ(
        expWriteData(reinterpret_cast<const std::uint8_t*>(command), sizeof command - 1, host.id()),
        0);
    std::array<std::uint8_t, 16> answer{};
    std::uint32_t count = 0;
    EXPECT_EQ(expReadData(answer.data(), &count, host.id()), 0);
    EXPECT_EQ(count, 0U);
    camera.faults().limitSerial(3);
    EXPECT_EQ(
        expWriteData(reinterpret_cast<const std::uint8_t*>(command), sizeof command - 1, host.id()),
        -1);
}

} // namespace
