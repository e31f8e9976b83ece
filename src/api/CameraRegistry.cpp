#include "CameraRegistry.h"

CQuorGrabber* CameraRegistry::find(std::int32_t cameraId) const
{
    const auto entry = mGrabbers.find(cameraId);
    return entry == mGrabbers.end() ? nullptr : entry->second;
}

void CameraRegistry::insert(std::int32_t cameraId, CQuorGrabber* grabber)
{
    mGrabbers.emplace(cameraId, grabber);
}

void CameraRegistry::erase(std::int32_t cameraId)
{
    mGrabbers.erase(cameraId);
}

CameraRegistry& cameraRegistry()
{
    static CameraRegistry registry;
    return registry;
}
