#ifndef TELVO_TOOLS_TELVO_LIVEVIEW_H
#define TELVO_TOOLS_TELVO_LIVEVIEW_H

#include "CameraSession.h"
#include "GrayImage.h"
#include "Keyboard.h"
#include "TerminalPicture.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace telvo
{

/// The live picture in the terminal, with what is to be known of it, and keys for exposure and
/// gain. The terminal is as before at the end.
class LiveView
{
  public:
    /// Standard output is a terminal. The camera is borrowed until the end.
    explicit LiveView(const CameraSession& camera);
    ~LiveView();
    LiveView(const LiveView&) = delete;
    LiveView& operator=(const LiveView&) = delete;

    /// Shows a frame, ten of them a second at most, and does what the keys say.
    /// @return false: the user wants the end
    bool show(GrayView frame, double rate, std::uint64_t lost);

  private:
    using Clock = std::chrono::steady_clock;

    bool obeyKeys();
    void change(const char* setting, double factor, int step);
    std::string statusText(GrayView frame, double rate, std::uint64_t lost) const;

    const CameraSession& mCamera;
    const TerminalGraphics mGraphics;
    Keyboard mKeyboard;
    Clock::time_point mNextDraw{};
    std::string mExposure;
    std::string mGain;
};

} // namespace telvo

#endif
