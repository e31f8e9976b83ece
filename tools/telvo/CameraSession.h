#ifndef TELVO_TOOLS_TELVO_CAMERASESSION_H
#define TELVO_TOOLS_TELVO_CAMERASESSION_H

#include "Setting.h"

#include <cstdint>
#include <string>
#include <vector>

namespace telvo
{

/// How the library is to reach a camera.
struct CameraAddress {
    std::string mac;
    std::string ip;
    bool onLoopback; // then the library gets the IP instead of the MAC, for which it would search
                     // every network
};

/**
 * A camera that is connected and initialised; disconnected at the end. One at a time.
 * A camera whose user sets the library had to prepare is connected a second time, and the user is
 * told. The constructor throws Failure.
 */
class CameraSession
{
  public:
    /// @param settings  those of the connection hold for it, in place of the usual values
    explicit CameraSession(const CameraAddress& address,
                           const std::vector<Assignment>& settings = {});
    ~CameraSession();
    CameraSession(const CameraSession&) = delete;
    CameraSession& operator=(const CameraSession&) = delete;

    /// What the library's functions take.
    std::int32_t id() const;

    /// A recording was running and goes on.
    bool isRecording() const { return mRecording; }

    /// Throws Failure if a recording is running, which the caller would end.
    void requireNoRecording() const;

    /// Writes those that the camera keeps, in this order. Throws Failure.
    void apply(const std::vector<Assignment>& settings) const;

    /// One of the library's identity texts, by its key ("model"); empty if there is none.
    std::string identity(const char* key) const;

    /// Throws Failure once the link to the camera is lost.
    void requireLink() const;

  private:
    bool mRecording = false;
};

} // namespace telvo

#endif
