#ifndef TELVO_CAMERA_LIVESOURCE_H
#define TELVO_CAMERA_LIVESOURCE_H

#include "FrameClock.h"
#include "Recorder.h"

namespace camera
{

/// One live image.
struct Exposure {
    std::uint64_t number = 0;  ///< counts from the start
    std::uint64_t leftOut = 0; ///< exposures since the one taken before, which nobody took
    CameraTime time{0};
    bool operator==(const Exposure&) const = default;
};

/// Live images: exposed at the image rate whether they are taken or not, and only the newest can be
/// taken. While the camera records, they are previews of the recording. Not thread-safe.
class LiveSource
{
  public:
    /// @param unpaced  an image is exposed whenever one is taken, whatever the rate
    explicit LiveSource(bool unpaced) : mUnpaced(unpaced) {}

    /// Image 0 is exposed now. @param rate  images a second
    void start(CameraTime now, std::uint32_t rate, const Recorder& recorder);
    void stop() { mRunning = false; }
    [[nodiscard]] bool isRunning() const { return mRunning; }
    void setRate(CameraTime now, std::uint32_t rate) { mClock.setRate(now, rate); }

    /// A recording begins: from now on its first exposures are new.
    void beginPreview() { mPreviewed = 0; }
    /// The recording is over: image `first` is exposed now.
    void endPreview(CameraTime now, std::uint32_t rate, std::uint64_t first);

    /// The newest image, if it was not taken.
    [[nodiscard]] std::optional<Exposure> take(CameraTime now);
    /// The image of an acquisition that has but one: the first, however late it is taken.
    [[nodiscard]] std::optional<Exposure> takeOnly(CameraTime now);
    /// The newest exposure of a running recording, if it was not taken.
    [[nodiscard]] std::optional<FrameStamp> takePreview(const Recorder& recorder);
    /// When there is an image again, after take() gave none.
    [[nodiscard]] CameraTime nextExposure() const { return mClock.timeOf(mTaken); }

  private:
    Exposure takeUpTo(std::uint64_t exposed, CameraTime now);

    const bool mUnpaced;
    bool mRunning = false;
    FrameClock mClock;
    std::uint64_t mTaken = 0;     // exposures of the clock that are taken or left out
    std::uint64_t mFirst = 0;     // number of the clock's exposure 0
    std::uint64_t mPreviewed = 0; // exposures of the recording that are taken or left out
};

} // namespace camera

#endif
