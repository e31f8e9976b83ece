/// What fetching a live picture costs while the camera sends 1000 frames of 1280x1024 a second, and
/// whether a fetched picture is ever made of two.
#include "FrameRenderer.h"
#include "HostSettings.h"
#include "Require.h"
#include "TelvoDll.h"
#include "VirtualCamera.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <thread>
#include <vector>

namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::size_t kFrameSize = 1280 * 1024;
constexpr int kPictures = 3000;
constexpr std::int32_t kCamera = 1;

void startLive(const camera::VirtualCamera& camera)
{
    const TelvoConnectionSettings settings = hostSettings(8000);
    require(expConnectGrabber(camera.macText().c_str(), camera.options().address.c_str(), 1,
                              &settings, kCamera) == 0,
            "connecting");
    require(expInitializeGrabber(&settings, kCamera) == 0, "initialising");
    require(expSetFrameRate(1000, kCamera) == 0, "setting the frame rate");
    require(expStartLiveMode(kCamera) == 0, "starting live images");
}

/// Whether the picture is the scene of its one frame number.
bool isWhole(const std::uint8_t* picture, const camera::SceneView& view,
             std::vector<std::uint8_t>& scene)
{
    std::uint32_t number = 0;
    std::memcpy(&number, picture, sizeof number); // little-endian, as this machine
    camera::renderScene(view, 0, number, scene);
    return std::equal(picture + camera::kFrameHeaderSize, picture + kFrameSize,
                      scene.begin() + camera::kFrameHeaderSize);
}

void measure()
{
    camera::VirtualCamera camera(
        {.address = "127.0.0.54", .userSetsPrepared = true, .unpaced = true});
    require(!camera.start(), "starting the camera");
    startLive(camera);

    std::vector<double> microseconds;
    std::vector<std::uint8_t> scene(kFrameSize);
    int torn = 0;
    while (microseconds.size() < kPictures) {
        std::uint8_t status = 0;
        std::uint8_t isLast = 0;
        const auto start = Clock::now();
        const std::uint8_t* const picture = expGetPreviewImage(&status, &isLast, kCamera);
        const std::chrono::duration<double, std::micro> time = Clock::now() - start;
        if (picture == nullptr) {
            std::this_thread::sleep_for(std::chrono::microseconds(100));
            continue;
        }
        microseconds.push_back(time.count());
        torn += isWhole(picture, camera.liveView(), scene) ? 0 : 1;
    }
    expDisconnectGrabber(kCamera);

    std::ranges::sort(microseconds);
    std::printf("a fetched picture: median %.1f us, 99 of 100 below %.1f us; %d of %d torn\n",
                microseconds[microseconds.size() / 2], microseconds[microseconds.size() * 99 / 100],
                torn, kPictures);
    require(torn == 0, "keeping pictures whole");
}

} // namespace

int main()
{
    return exitStatus(measure);
}
