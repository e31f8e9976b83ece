#ifndef TELVO_TOOLS_TELVO_PANEL_LIVEMODE_H
#define TELVO_TOOLS_TELVO_PANEL_LIVEMODE_H

#include "CameraSession.h"
#include "DeskMode.h"
#include "LivePictures.h"

#include <chrono>

namespace telvo
{

/// The camera sends live pictures, from the constructor to the end.
class LiveMode : public DeskMode
{
  public:
    /// Both are borrowed until the end. Throws Failure.
    LiveMode(const CameraSession& camera, LivePictures& pictures);
    ~LiveMode() override;

    Step step() override;
    Json state() const override;
    bool isLive() const override { return true; }

  private:
    using Clock = std::chrono::steady_clock;

    bool isSilent() const;

    const CameraSession& mCamera;
    LivePictures& mPictures;
    Clock::time_point mLastPicture = Clock::now();
};

} // namespace telvo

#endif
