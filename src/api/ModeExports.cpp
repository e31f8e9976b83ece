#include "ExportFrame.h"

namespace
{

constexpr std::uint32_t kNoNewImage = static_cast<std::uint32_t>(-3);
constexpr std::uint32_t kFlagged = static_cast<std::uint32_t>(-1);

bool isFlagged(const FrameHeader& header)
{
    constexpr std::uint8_t kFlagBit = 1U << 2; // of the camera's byte 7, before it is inverted
    return (header.flags & kFlagBit) == 0;
}

/// @return nothing without a new one, and when the link is lost
std::optional<HeadedFrame> newestImage(CQuorGrabber& grabber)
{
    return grabber.settings().link.isLost ? std::nullopt : grabber.modes().liveImages().take();
}

} // namespace

std::int32_t expStartLiveMode(std::int32_t cameraId) noexcept
{
    return onModes(cameraId, &ModeControl::startLiveMode);
}

std::int32_t expStopLiveMode(std::int32_t cameraId) noexcept
{
    return onModes(cameraId, &ModeControl::stopCurrentMode);
}

std::int32_t expPauseLiveMode(std::uint8_t pause, std::int32_t cameraId) noexcept
{
    return onModes(cameraId, &ModeControl::pauseLiveMode, pause != 0);
}

std::int32_t expStartRecordMode(std::int32_t cameraId) noexcept
{
    return onModes(cameraId, &ModeControl::startRecordMode, RecordStart::New);
}

std::int32_t expStopRecordMode(std::int32_t cameraId) noexcept
{
    return onModes(cameraId, &ModeControl::stopCurrentMode);
}

std::int32_t expAbortRecording(std::int32_t cameraId) noexcept
{
    return onModes(cameraId, &ModeControl::abortRecording);
}

std::int32_t expIsStateIdle(std::uint8_t* idle, std::int32_t cameraId) noexcept
{
    return readMode(cameraId, &ModeControl::isStateIdle, idle);
}

std::int32_t expIsStateFlashWrite(std::uint8_t* flashWrite, std::int32_t cameraId) noexcept
{
    return readMode(cameraId, &ModeControl::isStateFlashWrite, flashWrite);
}

std::int32_t expIsTrailerRecordingActive(std::uint8_t* active, std::int32_t cameraId) noexcept
{
    return readMode(cameraId, &ModeControl::isTrailerRecordingActive, active);
}

std::int32_t expGetCurrentNumberOfImages(std::int32_t cameraId) noexcept
{
    const auto count = [](CQuorGrabber& grabber) {
        return grabber.modes().getCurrentNumberOfImages();
    };
    return callGrabber(cameraId, std::int32_t{0}, count);
}

const std::uint8_t* expGetPreviewImage(std::uint8_t* status, std::uint8_t* last,
                                       std::int32_t cameraId) noexcept
{
    const auto take = [](CQuorGrabber& grabber, std::uint8_t* statusOut,
                         std::uint8_t* lastOut) -> const std::uint8_t* {
        const auto image = newestImage(grabber);
        if (!image) {
            return nullptr;
        }
        *statusOut = image->header.flags;
        *lastOut = image->header.extra;
        return image->data;
    };
    return imageOnGrabber(cameraId, take, status, last);
}

const std::uint8_t* expGetSingleImage(std::uint32_t* result, std::uint32_t* flag,
                                      std::uint8_t* status, std::uint8_t* last,
                                      std::int32_t cameraId) noexcept
{
    const auto take = [](CQuorGrabber& grabber, std::uint32_t* resultOut, std::uint32_t* flagOut,
                         std::uint8_t* statusOut, std::uint8_t* lastOut) -> const std::uint8_t* {
        if (grabber.settings().link.isLost) {
            return nullptr;
        }
        const auto image = newestImage(grabber);
        *resultOut = image ? 0 : kNoNewImage;
        *flagOut = image && isFlagged(image->header) ? kFlagged : 0;
        if (!image) {
            return nullptr;
        }
        *statusOut = image->header.flags;
        *lastOut = image->header.extra;
        return image->data;
    };
    return imageOnGrabber(cameraId, take, result, flag, status, last);
}
