#ifndef TELVO_TESTS_INTEGRATION_STACKHOST_H
#define TELVO_TESTS_INTEGRATION_STACKHOST_H

#include "PvDevice.h"
#include "PvPipeline.h"
#include "VirtualCamera.h"

#include <cstdint>
#include <gtest/gtest.h>

/// A virtual camera, and a host of it that uses the Pv classes alone. Pictures are of 640x480.
class StackHost : public testing::Test
{
  protected:
    static constexpr const char* kIp = "127.0.0.11";

    explicit StackHost(const camera::CameraOptions& options = {}) : camera(options) {}

    /// Switches the camera on.
    void SetUp() override;
    /// Opens the stream, and sets the connected camera to send it live pictures.
    void openStream(std::int64_t framesPerSecond);
    void startPipeline(std::uint32_t buffers = 16);
    /// Before the stream is opened. A picture then ends when the second one after it begins, not
    /// because the machine is busy.
    void endNoPictureByTime();
    void execute(const char* command);
    /// Of the stream.
    std::int64_t statistic(const char* name);

    static void setInteger(PvGenParameterArray& array, const char* name, std::int64_t value);
    /// Whether the system gives this process packet rings.
    static bool hasPacketRings();

    camera::VirtualCamera camera;
    PvDevice device;
    PvStream stream;
    PvPipeline pipeline{&stream};
};

/// The camera sends its packets one by one.
camera::CameraOptions likeOnACable();

#endif
