#include "Host.h"

#include "FrameRenderer.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <thread>

camera::CameraOptions preparedCamera(const std::string& address)
{
    camera::CameraOptions options;
    options.address = address;
    options.userSetsPrepared = true;
    return options;
}

TelvoConnectionSettings fastSettings()
{
    TelvoConnectionSettings settings{};
    settings.useSettings = 1;
    settings.packetSize = 8000;
    settings.packetTimeout = 1000;
    settings.requestTimeout = 1100;
    settings.defaultImageTimeout = 1100;
    settings.answerTimeout = 1000;
    settings.heartbeatTimeout = 3000;
    settings.heartbeatInterval = 500;
    settings.fastReadoutActive = 1;
    settings.requestMode = 1;
    settings.outputDataRate = 3;
    return settings;
}

TelvoConnectionSettings impatientSettings()
{
    TelvoConnectionSettings settings = fastSettings();
    settings.packetSize = 1500;
    settings.packetTimeout = 100;
    settings.defaultImageTimeout = 200;
    settings.requestTimeout = 300;
    return settings;
}

TelvoConnectionSettings defaultSettings()
{
    return {};
}

Host::~Host()
{
    disconnect();
}

std::int32_t Host::connect(const camera::VirtualCamera& camera,
                           const TelvoConnectionSettings& settings)
{
    const std::int32_t result = expConnectGrabber(
        camera.macText().c_str(), camera.options().address.c_str(), 1, &settings, mId);
    if (result >= 0) {
        expSetChangedCallback([](std::int32_t) {}, mId);
    }
    return result;
}

std::int32_t Host::initialize(const TelvoConnectionSettings& settings)
{
    return expInitializeGrabber(&settings, mId);
}

std::int32_t Host::disconnect()
{
    return expDisconnectGrabber(mId);
}

void Host::open(const camera::VirtualCamera& camera, const TelvoConnectionSettings& settings)
{
    ASSERT_EQ(connect(camera, settings), 0);
    ASSERT_EQ(initialize(settings), 0);
}

std::vector<std::uint8_t> Host::previewImage() const
{
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    expGetWidth(&width, mId);
    expGetHeight(&height, mId);
    std::uint8_t status = 0;
    std::uint8_t last = 0;
    const std::uint8_t* const image = expGetPreviewImage(&status, &last, mId);
    if (image == nullptr) {
        return {};
    }
    return {image, image + std::size_t{width} * height};
}

std::vector<std::uint8_t> Host::nextImage() const
{
    std::vector<std::uint8_t> image;
    eventually([&] {
        image = previewImage();
        return !image.empty();
    });
    return image;
}

bool eventually(const std::function<bool()>& condition, std::chrono::milliseconds limit)
{
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        std::this_thread::sleep_for(1ms);
    }
    return true;
}

std::chrono::milliseconds timeOf(const std::function<void()>& call)
{
    const auto start = std::chrono::steady_clock::now();
    call();
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                 start);
}

std::optional<std::uint32_t> lastWritten(const camera::VirtualCamera& camera,
                                         camera::FeatureId feature)
{
    const auto values = camera.log().valuesWritten(feature);
    return values.empty() ? std::nullopt : std::optional(values.back());
}

std::uint32_t frameNumber(const std::vector<std::uint8_t>& frame)
{
    return static_cast<std::uint32_t>(frame[0] | frame[1] << 8 | frame[2] << 16 | frame[3] << 24);
}

bool showsScene(const std::vector<std::uint8_t>& frame, const camera::SceneView& view,
                std::uint32_t sequence)
{
    if (frame.size() != std::size_t{view.width} * view.height) {
        return false;
    }
    std::vector<std::uint8_t> scene(frame.size());
    camera::renderScene(view, sequence, frameNumber(frame), scene);
    return std::equal(frame.begin() + camera::kFrameHeaderSize, frame.end(),
                      scene.begin() + camera::kFrameHeaderSize);
}
