#ifndef TELVO_TOOLS_TELVO_PANEL_FLASHMODE_H
#define TELVO_TOOLS_TELVO_PANEL_FLASHMODE_H

#include "CameraSession.h"
#include "DeskMode.h"

#include <chrono>
#include <cstdint>

namespace telvo
{

bool hasFlashCard(const CameraSession& camera);

/// The camera copies its recording to its flash card.
class FlashMode : public DeskMode
{
  public:
    enum class After : std::uint8_t { Recording, Command };

    /// The camera is borrowed until the end.
    FlashMode(const CameraSession& camera, After after);

    Step step() override;
    Json state() const override;
    const char* busy() const override
    {
        return "the camera copies to its flash card; wait for it, or end the copy";
    }

  private:
    using Clock = std::chrono::steady_clock;

    const CameraSession& mCamera;
    const After mAfter;
    const Clock::time_point mStart = Clock::now();
};

} // namespace telvo

#endif
