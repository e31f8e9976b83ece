#include "LinkLossSink.h"

#include "CQuorGrabber.h"

void LinkLossSink::leave()
{
    const std::lock_guard lock(mLock);
    mGrabber = nullptr;
}

void LinkLossSink::OnLinkDisconnected(PvDevice* /*device*/)
{
    TelvoChangedCallback callback = nullptr;
    {
        const std::lock_guard lock(mLock);
        if (mGrabber != nullptr) {
            callback = mGrabber->noteLinkLost();
        }
    }
    if (callback != nullptr) {
        callback(0);
    }
}
