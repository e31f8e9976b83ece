#include "CameraFinder.h"

#include "CameraChoice.h"
#include "ToolError.h"

#include "BootstrapRegisters.h"
#include "ControlChannel.h"
#include "DeviceRegisters.h"

#include <exception>
#include <utility>

namespace telvo
{

namespace
{

namespace control = gige::control;
namespace wire = gige::wire;

/// Its control register, which anybody may read, unless a host has the camera for itself alone.
bool isFree(const control::DiscoveredDevice& device)
{
    const control::LinkSettings settings;
    const auto channel = control::ControlChannel::open(device.nic.address, device.ip(), settings);
    if (!channel || !device.inSubnet()) {
        return false;
    }
    const auto privilege =
        control::DeviceRegisters(*channel).readRegister(wire::kRegControlPrivilege);
    return privilege && *privilege == wire::kPrivilegeOpen;
}

} // namespace

CameraFinder::CameraFinder(SearchOptions options, Found found, Failed failed)
    : mOptions(std::move(options)),
      mFound(std::move(found)),
      mFailed(std::move(failed)),
      mThread([this](const std::stop_token& stop) { run(stop); })
{
}

CameraFinder::~CameraFinder() = default;

void CameraFinder::search()
{
    {
        const std::lock_guard guard(mLock);
        mIsAsked = true;
    }
    mChanged.notify_one();
}

void CameraFinder::run(const std::stop_token& stop)
{
    while (!stop.stop_requested()) {
        {
            std::unique_lock guard(mLock);
            mChanged.wait(guard, stop, [this] { return mIsAsked; });
            mIsAsked = false;
        }
        if (!stop.stop_requested()) {
            look();
        }
    }
}

void CameraFinder::look()
{
    try {
        std::vector<FoundCamera> cameras;
        for (const control::DiscoveredDevice& device : findCameras(mOptions)) {
            cameras.push_back({addressOf(device), isFree(device)});
        }
        mFound(cameras);
    } catch (const Cancelled&) { // NOLINT(bugprone-empty-catch): the program ends
    } catch (const std::exception& failure) {
        mFailed(failure.what());
    }
}

} // namespace telvo
