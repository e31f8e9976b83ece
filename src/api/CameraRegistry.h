#ifndef TELVO_SRC_API_CAMERAREGISTRY_H
#define TELVO_SRC_API_CAMERAREGISTRY_H

#include <cstdint>
#include <map>
#include <mutex>

class CQuorGrabber;

/**
 * The cameras that the host has connected, by the id that it chose. The registry does not own
 * them: expConnectGrabber creates a grabber and expDisconnectGrabber destroys it, and one that is
 * still there when the library is unloaded is left alone.
 *
 * Threads: any. mLock guards the map and is never held while a camera is worked on. An id under
 * which a camera is being connected or disconnected is reserved: it is not found, nor taken by
 * another connect.
 */
class CameraRegistry
{
  public:
    /// @return null for an unknown or reserved id
    CQuorGrabber* find(std::int32_t cameraId) const;

    /// @return false: the id is in use, or reserved
    bool reserve(std::int32_t cameraId);
    /// Makes a reserved id that of a camera.
    void insert(std::int32_t cameraId, CQuorGrabber* grabber) noexcept;
    /// Takes an id's camera out; the id stays reserved. @return null for an unknown or reserved id
    CQuorGrabber* take(std::int32_t cameraId) noexcept;
    /// Forgets a reserved id.
    void release(std::int32_t cameraId) noexcept;

  private:
    mutable std::mutex mLock;
    std::map<std::int32_t, CQuorGrabber*> mGrabbers; // null: reserved
};

/// The one of this process, from its first use to the end of the process.
CameraRegistry& cameraRegistry();

/// Reserves an id, if it is free, until a camera gets it or this object ends.
class ReservedId
{
  public:
    explicit ReservedId(std::int32_t cameraId)
        : mId(cameraId), mIsReserved(cameraRegistry().reserve(cameraId))
    {
    }
    ~ReservedId();
    ReservedId(const ReservedId&) = delete;
    ReservedId& operator=(const ReservedId&) = delete;

    /// Reserves the id if it has become free since. @return false: it is in use, or reserved
    bool tryAgain();
    void giveTo(CQuorGrabber* grabber) noexcept;

  private:
    std::int32_t mId;
    bool mIsReserved;
};

#endif
