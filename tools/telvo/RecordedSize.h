#ifndef TELVO_TOOLS_TELVO_RECORDEDSIZE_H
#define TELVO_TOOLS_TELVO_RECORDEDSIZE_H

#include "Recording.h"

namespace telvo
{

/// Sets the camera to the picture size of its recording, in which it is read, and back to its
/// user's at the end.
class RecordedSize
{
  public:
    /// @param camera  borrowed until the end
    /// Throws Failure if the camera does not take the size.
    RecordedSize(const CameraSession& camera, const RecordingInfo& info);
    ~RecordedSize();
    RecordedSize(const RecordedSize&) = delete;
    RecordedSize& operator=(const RecordedSize&) = delete;

    /// Whether the camera has another size now than its user's.
    bool isChanged() const { return mChanged; }

  private:
    struct Region {
        std::uint32_t x;
        std::uint32_t y;
        std::uint32_t width;
        std::uint32_t height;
    };

    Region read() const;
    /// Where a region lies bounds its size: it is moved to the corner first.
    void apply(Region region) const;

    const CameraSession& mCamera;
    Region mUsers;
    bool mChanged;
};

} // namespace telvo

#endif
