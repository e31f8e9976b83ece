#ifndef TELVO_TESTS_SRC_GRABBERTEST_H
#define TELVO_TESTS_SRC_GRABBERTEST_H

#include "StandIn.h"
#include "TelvoDll.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <set>

constexpr std::int32_t kCamera = 1;
constexpr const char* kMac = "02:54:45:00:00:21";
constexpr const char* kIp = "127.0.0.21";

/// The library on the stand-in. Cameras that a test connected are disconnected at its end.
class GrabberTest : public ::testing::Test
{
  protected:
    /// Connects the stand-in's camera under an id.
    std::int32_t connect(std::int32_t cameraId = kCamera)
    {
        return connect(kMac, kIp, 1, {}, cameraId);
    }

    std::int32_t connect(const char* macAddress, const char* ipAddress,
                         std::uint8_t ipConfigurationValid, const TelvoConnectionSettings& settings,
                         std::int32_t cameraId = kCamera)
    {
        mCameraIds.insert(cameraId);
        return expConnectGrabber(macAddress, ipAddress, ipConfigurationValid, &settings, cameraId);
    }

    /// Initialises with the default settings; may be called again, to bind changed features.
    std::int32_t initialize(const TelvoConnectionSettings& settings = {},
                            std::int32_t cameraId = kCamera)
    {
        return expInitializeGrabber(&settings, cameraId);
    }

    void TearDown() override
    {
        s.onCall(nullptr);
        for (const std::int32_t cameraId : mCameraIds) {
            expDisconnectGrabber(cameraId);
        }
    }

    StandIn s;

  private:
    std::set<std::int32_t> mCameraIds;
};

/// With a camera connected and initialised under kCamera, in playback mode; nothing recorded yet.
class InitializedGrabberTest : public GrabberTest
{
  protected:
    void SetUp() override
    {
        ASSERT_EQ(connect(), 0);
        ASSERT_EQ(initialize(), 0);
        s.forget();
    }

    /// Initialises again after features were removed or retyped, and forgets its calls.
    void rebind()
    {
        ASSERT_EQ(initialize(), 0);
        s.forget();
    }
};

#endif
