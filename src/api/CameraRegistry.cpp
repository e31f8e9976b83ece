#include "CameraRegistry.h"

#include <cstddef>
#include <new>
#include <utility>

CQuorGrabber* CameraRegistry::find(std::int32_t cameraId) const
{
    const std::lock_guard lock(mLock);
    const auto entry = mGrabbers.find(cameraId);
    return entry == mGrabbers.end() ? nullptr : entry->second;
}

bool CameraRegistry::reserve(std::int32_t cameraId)
{
    const std::lock_guard lock(mLock);
    return mGrabbers.emplace(cameraId, nullptr).second;
}

void CameraRegistry::insert(std::int32_t cameraId, CQuorGrabber* grabber) noexcept
{
    const std::lock_guard lock(mLock);
    mGrabbers.find(cameraId)->second = grabber;
}

CQuorGrabber* CameraRegistry::take(std::int32_t cameraId) noexcept
{
    const std::lock_guard lock(mLock);
    const auto entry = mGrabbers.find(cameraId);
    return entry == mGrabbers.end() ? nullptr : std::exchange(entry->second, nullptr);
}

void CameraRegistry::release(std::int32_t cameraId) noexcept
{
    const std::lock_guard lock(mLock);
    mGrabbers.erase(cameraId);
}

CameraRegistry& cameraRegistry()
{
    // Never destroyed: a host may disconnect in an exit handler that runs after the destructors of
    // our statics.
    alignas(CameraRegistry) static std::byte memory[sizeof(CameraRegistry)];
    static auto* const registry = new (memory) CameraRegistry;
    return *registry;
}

ReservedId::~ReservedId()
{
    if (mIsReserved) {
        cameraRegistry().release(mId);
    }
}

bool ReservedId::tryAgain()
{
    mIsReserved = mIsReserved || cameraRegistry().reserve(mId);
    return mIsReserved;
}

void ReservedId::giveTo(CQuorGrabber* grabber) noexcept
{
    cameraRegistry().insert(mId, grabber);
    mIsReserved = false;
}
