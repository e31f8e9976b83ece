#ifndef TELVO_TOOLS_TELVO_PANEL_IDLEMODE_H
#define TELVO_TOOLS_TELVO_PANEL_IDLEMODE_H

#include "CameraSession.h"
#include "DeskMode.h"

#include <string>

namespace telvo
{

/// Connected and at rest.
class IdleMode : public DeskMode
{
  public:
    /// @param camera  borrowed until the end
    /// @param news    what led here, for people: "connected"
    IdleMode(const CameraSession& camera, std::string news);

    Step step() override;
    Json state() const override;

  private:
    const CameraSession& mCamera;
    const std::string mNews;
    std::uint32_t mRecorded = 0; // frames in the camera's memory
};

} // namespace telvo

#endif
