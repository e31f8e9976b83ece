// Hosts that work with several cameras at once, each on a thread of its own.
#include "Recording.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace
{

using camera::VirtualCamera;

constexpr std::int32_t kCameras = 8;
constexpr std::uint32_t kFrames = 20;

/// Everything that a host does with a camera, from connecting to disconnecting it.
void useCamera(const VirtualCamera& camera, std::int32_t cameraId)
{
    Host host(cameraId);
    ASSERT_NO_FATAL_FAILURE(host.open(camera, patientSettings()));
    ASSERT_EQ(expStartLiveMode(cameraId), 0);
    EXPECT_FALSE(host.nextImage().empty());
    EXPECT_EQ(expStopLiveMode(cameraId), 0);

    ASSERT_EQ(expSetRecordMode(0, cameraId), 0);
    ASSERT_EQ(expStartRecordMode(cameraId), 0);
    EXPECT_TRUE(hasFinished(camera));
    EXPECT_EQ(expStopRecordMode(cameraId), 0);

    ASSERT_EQ(expStartFrameBlockTransfer(cameraId), 0);
    EXPECT_TRUE(readsRecorded(host, camera, {.count = kFrames}));
    EXPECT_EQ(expStopFrameBlockTransfer(cameraId), 0);
    EXPECT_EQ(host.disconnect(), 0);
}

// Takes its time by the pauses that a connection and an initialisation prescribe.
TEST(HostThreads, UseEightCamerasAtOnceTwice)
{
    std::vector<std::unique_ptr<VirtualCamera>> cameras;
    for (std::int32_t i = 0; i < kCameras; ++i) {
        const std::string address = "127.0.0." + std::to_string(21 + i);
        cameras.push_back(std::make_unique<VirtualCamera>(recordingCamera(kFrames, address)));
        ASSERT_FALSE(cameras.back()->start());
    }
    std::vector<std::thread> threads;
    for (std::int32_t i = 0; i < kCameras; ++i) {
        threads.emplace_back([&camera = *cameras[static_cast<std::size_t>(i)], i] {
            useCamera(camera, i);
            useCamera(camera, kCameras + i);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(HostThreads, MayConnectUnderOneIdButOneCameraGetsIt)
{
    VirtualCamera first(preparedCamera("127.0.0.21"));
    VirtualCamera second(preparedCamera("127.0.0.22"));
    ASSERT_FALSE(first.start());
    ASSERT_FALSE(second.start());
    Host host;
    std::thread other([&] { EXPECT_EQ(host.connect(second), 0); });
    EXPECT_EQ(host.connect(first), 0);
    other.join();
    EXPECT_EQ(host.disconnect(), 0);
    EXPECT_EQ(host.disconnect(), -1);
}

} // namespace
