#include "RecordedSize.h"

#include "ToolError.h"

#include "TelvoDll.h"

#include <string>

namespace telvo
{

RecordedSize::RecordedSize(const CameraSession& camera, const RecordingInfo& info)
    : mCamera(camera),
      mUsers(read()),
      mChanged(mUsers.width != info.width || mUsers.height != info.height)
{
    if (!mChanged) {
        return;
    }
    apply({0, 0, info.width, info.height});
    const Region now = read();
    if (now.width != info.width || now.height != info.height) {
        apply(mUsers);
        throw Failure("the camera does not take the size of its recording, " +
                      std::to_string(info.width) + 'x' + std::to_string(info.height) +
                      "; 'telvo log' shows why");
    }
}

RecordedSize::~RecordedSize()
{
    if (mChanged) {
        apply(mUsers);
    }
}

RecordedSize::Region RecordedSize::read() const
{
    Region region{};
    expGetOffset(&region.x, &region.y, mCamera.id());
    expGetWidth(&region.width, mCamera.id());
    expGetHeight(&region.height, mCamera.id());
    return region;
}

void RecordedSize::apply(Region region) const
{
    std::uint32_t left = 0;
    std::uint32_t top = 0;
    expSetOffsetX(&left, mCamera.id());
    expSetOffsetY(&top, mCamera.id());
    expSetWidth(&region.width, mCamera.id());
    expSetHeight(&region.height, mCamera.id());
    expSetOffsetX(&region.x, mCamera.id());
    expSetOffsetY(&region.y, mCamera.id());
}

} // namespace telvo
