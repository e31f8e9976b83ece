#ifndef TELVO_TESTS_TOOLS_TELVO_PROCESS_CAMERATEST_H
#define TELVO_TESTS_TOOLS_TELVO_PROCESS_CAMERATEST_H

#include "ToolProcess.h"

#include "VirtualCamera.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

/// A camera with small pictures whose user sets are prepared, for quick tests.
camera::CameraOptions quickCamera(const std::string& address = "127.0.0.11");

/// @return false: it is not so within 10 seconds
bool becomes(const std::function<bool()>& so);

/// One virtual camera on 127.0.0.11, and the tool to work with it.
class CameraTest : public testing::Test
{
  protected:
    void switchOn(const camera::CameraOptions& options = quickCamera());
    camera::VirtualCamera& camera() { return *mCamera; }

    /// The command for this camera: with --camera behind it.
    std::vector<std::string> forCamera(std::vector<std::string> arguments) const;
    ToolOutcome run(std::vector<std::string> arguments, const std::string& input = "") const;
    /// Whether nobody controls the camera.
    bool isFree() const;
    std::int64_t value(camera::FeatureId feature) { return mCamera->value(feature); }

  private:
    std::unique_ptr<camera::VirtualCamera> mCamera;
};

#endif
