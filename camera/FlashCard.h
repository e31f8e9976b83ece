#ifndef TELVO_CAMERA_FLASHCARD_H
#define TELVO_CAMERA_FLASHCARD_H

#include "Recorder.h"

namespace camera
{

/// The card that recordings are copied to: what it takes is time. Not thread-safe.
class FlashCard
{
  public:
    explicit FlashCard(std::uint64_t bytesPerSecond) : mBytesPerSecond(bytesPerSecond) {}

    /// Begins to copy. False when there is nothing to copy, or not all of it yet.
    [[nodiscard]] bool copy(const Recorder& recorder, CameraTime now)
    {
        if (recorder.isRecording() || recorder.allFrames() == 0) {
            return false;
        }
        const SceneView& view = recorder.settings().view;
        const std::uint64_t bytes = std::uint64_t{view.width} * view.height * recorder.allFrames();
        occupy(now + std::chrono::milliseconds(bytes * 1000 / mBytesPerSecond));
        return true;
    }
    void occupy(CameraTime until) { mBusyUntil = until; }
    void stop() { mBusyUntil = CameraTime::min(); }
    [[nodiscard]] bool isBusy(CameraTime now) const { return now < mBusyUntil; }

  private:
    const std::uint64_t mBytesPerSecond;
    CameraTime mBusyUntil = CameraTime::min();
};

} // namespace camera

#endif
