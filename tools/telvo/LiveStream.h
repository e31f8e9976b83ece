#ifndef TELVO_TOOLS_TELVO_LIVESTREAM_H
#define TELVO_TOOLS_TELVO_LIVESTREAM_H

#include "CameraSession.h"
#include "GrayImage.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace telvo
{

/// A camera's live mode: started by the constructor, which throws Failure, stopped at the end.
class LiveStream
{
  public:
    /// The camera is borrowed until the end.
    explicit LiveStream(const CameraSession& camera);
    ~LiveStream();
    LiveStream(const LiveStream&) = delete;
    LiveStream& operator=(const LiveStream&) = delete;

    /// The newest frame not yet seen, valid until the next call; none if none came within a short
    /// while. Throws Failure when the camera sends nothing for long or its link is lost.
    std::optional<GrayView> next();

    /// Ends live mode: waits until the camera is idle.
    void stop();

    std::uint32_t width() const { return mWidth; }   // pixels
    std::uint32_t height() const { return mHeight; } // pixels

  private:
    const CameraSession& mCamera;
    std::uint32_t mWidth = 0;
    std::uint32_t mHeight = 0;
    std::chrono::steady_clock::time_point mLastFrame;
    bool mRunning = false;
};

} // namespace telvo

#endif
