#ifndef TELVO_CAMERA_FRAMECLOCK_H
#define TELVO_CAMERA_FRAMECLOCK_H

#include <chrono>
#include <cstdint>

namespace camera
{

/// Time since the camera was switched on.
using CameraTime = std::chrono::nanoseconds;

/// When which frame is exposed: frame 0 at the start, the others at the image rate. The rate may
/// change at any time; frames exposed before keep their times.
class FrameClock
{
  public:
    FrameClock() = default;
    /// @param rate  images a second, not 0
    FrameClock(CameraTime start, std::uint32_t rate) : mBase(start), mRate(rate) {}

    [[nodiscard]] CameraTime timeOf(std::uint64_t number) const
    {
        return mBase + std::chrono::nanoseconds((number - mBaseNumber) * kSecond / mRate);
    }

    /// Frames exposed until then, the one of this moment included; 0 before the start.
    [[nodiscard]] std::uint64_t exposedAt(CameraTime now) const
    {
        if (now < mBase) {
            return mBaseNumber;
        }
        const auto passed = static_cast<std::uint64_t>((now - mBase).count());
        // Split, since seconds times rate times 10^9 would not fit.
        const std::uint64_t frames = passed / kSecond * mRate + passed % kSecond * mRate / kSecond;
        return mBaseNumber + frames + 1;
    }

    void setRate(CameraTime now, std::uint32_t rate)
    {
        const std::uint64_t next = exposedAt(now);
        mBase = timeOf(next);
        mBaseNumber = next;
        mRate = rate;
    }

  private:
    static constexpr std::uint64_t kSecond = 1'000'000'000; // nanoseconds

    CameraTime mBase{0};
    std::uint64_t mBaseNumber = 0;
    std::uint64_t mRate = 1;
};

} // namespace camera

#endif
