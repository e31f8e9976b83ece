// The newest live image, from the acquisition thread to the host.
#include "CQuorAcquisitionThread.h"
#include "CQuorGrabber.h"
#include "FrameExchange.h"
#include "FrameHeader.h"
#include "LinkLimits.h"

namespace
{
constexpr std::uint32_t kNoNewImage = static_cast<std::uint32_t>(-3);
constexpr std::uint32_t kFlagged = static_cast<std::uint32_t>(-1);
constexpr std::uint8_t kFlagBit = 1U << 2; // of the camera's byte 7, before it is inverted
} // namespace

const std::uint8_t* CQuorGrabber::getSingleImage(std::uint32_t* result, std::uint32_t* flag,
                                                 std::uint8_t* status, std::uint8_t* last)
{
    if (mIsConnectionLost) {
        return nullptr;
    }
    *result = 0;
    *flag = 0;
    const std::span<const std::uint8_t> image = takeLiveFrame();
    const auto header = decodeFrameHeader(image);
    if (!header) {
        *result = kNoNewImage;
        return nullptr;
    }
    *flag = (header->flags & kFlagBit) == 0 ? kFlagged : 0;
    *status = header->flags;
    *last = header->extra;
    return image.data();
}

std::span<const std::uint8_t> CQuorGrabber::takeLiveFrame()
{
    // Of the size that the host knows by now, unless that is none that live mode could have.
    const std::uint32_t frameSize = mGeometry.frameSize();
    const bool isLiveSize = frameSize != 0 && frameSize <= kPipelineMemory;
    return isLiveSize ? mFrames->take(frameSize) : std::span<const std::uint8_t>();
}

const std::uint8_t* CQuorGrabber::getPreviewImage(std::uint8_t* status, std::uint8_t* last)
{
    std::uint32_t result = 0;
    std::uint32_t flag = 0;
    return getSingleImage(&result, &flag, status, last);
}

void CQuorGrabber::putLiveFrame(std::span<const std::uint8_t> image)
{
    const Mode mode = mMode.current;
    if (mode != Mode::BlockTransfer && mode != Mode::Playback) {
        mFrames->put(image);
    }
}

std::int32_t CQuorGrabber::getCurrentNumberOfImages()
{
    return mAcquisitionThread == nullptr ? 0 : mAcquisitionThread->frameCount();
}
