#include "Device.h"

#include <algorithm>

namespace camera
{

Device::LockedCore Device::present()
{
    LockedCore core = locked();
    core->advance(now());
    return core;
}

void Device::setChannel(const StreamChannel& channel)
{
    locked()->stream.setChannel(channel);
    mChanged.notify_all();
}

void Device::dropHost()
{
    locked()->dropHost();
    mChanged.notify_all();
}

std::optional<StreamOrder> Device::nextBlock(std::chrono::milliseconds patience)
{
    std::unique_lock lock(mLock);
    const CameraTime limit = now() + patience;
    while (!mWoken) {
        mCore.advance(now());
        if (auto block = mCore.stream.nextBlock(mCore.now())) {
            return block;
        }
        if (mCore.now() >= limit) {
            break;
        }
        mChanged.wait_until(lock, mPowerOn + std::min(mCore.stream.nextExposure(), limit));
    }
    return std::nullopt;
}

void Device::wake()
{
    const std::scoped_lock lock(mLock);
    mWoken = true;
    mChanged.notify_all();
}

} // namespace camera
