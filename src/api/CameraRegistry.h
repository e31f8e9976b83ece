#ifndef TELVO_SRC_API_CAMERAREGISTRY_H
#define TELVO_SRC_API_CAMERAREGISTRY_H

#include <cstdint>
#include <map>

class CQuorGrabber;

/**
 * The cameras that the host has connected, by the id that it chose. The registry does not own
 * them: expConnectGrabber creates a grabber and expDisconnectGrabber destroys it, and one that is
 * still there when the library is unloaded is left alone.
 *
 * Threads: the host's only; hosts call one export at a time.
 */
class CameraRegistry
{
  public:
    /// @return null for an unknown id
    CQuorGrabber* find(std::int32_t cameraId) const;
    /// An id that is registered already keeps its grabber.
    void insert(std::int32_t cameraId, CQuorGrabber* grabber);
    void erase(std::int32_t cameraId);

    /// The grabber that the host last connected; null after a failed connect and a disconnect.
    CQuorGrabber* current() const { return mCurrent; }
    void setCurrent(CQuorGrabber* grabber) { mCurrent = grabber; }

  private:
    std::map<std::int32_t, CQuorGrabber*> mGrabbers;
    CQuorGrabber* mCurrent = nullptr;
};

/// The one of this process.
CameraRegistry& cameraRegistry();

#endif
