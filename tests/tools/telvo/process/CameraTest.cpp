#include "CameraTest.h"

#include "CameraControl.h"

#include <chrono>
#include <thread>
#include <utility>

camera::CameraOptions quickCamera(const std::string& address)
{
    camera::CameraOptions options;
    options.address = address;
    options.sensor = camera::SensorSize{.width = 64, .height = 48};
    options.memoryBytes = std::uint64_t{64} << 20;
    options.userSetsPrepared = true;
    return options;
}

bool becomes(const std::function<bool()>& so)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!so()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

void CameraTest::switchOn(const camera::CameraOptions& options)
{
    mCamera = std::make_unique<camera::VirtualCamera>(options);
    const auto problem = mCamera->start();
    ASSERT_FALSE(problem) << *problem;
}

std::vector<std::string> CameraTest::forCamera(std::vector<std::string> arguments) const
{
    arguments.insert(arguments.end(), {"--camera", mCamera->options().address});
    return arguments;
}

ToolOutcome CameraTest::run(std::vector<std::string> arguments, const std::string& input) const
{
    return runTool(forCamera(std::move(arguments)), input);
}

bool CameraTest::isFree() const
{
    return ::isFree(*mCamera);
}
