#include "ExportFrame.h"

std::int32_t expStartFrameBlockTransfer(std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::startFrameBlockTransfer);
}

std::int32_t expStopFrameBlockTransfer(std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::stopCurrentMode);
}

std::int32_t expGetFrameBlockSize(std::uint32_t* frames, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getFrameBlockSize, frames);
}

std::int32_t expGetRecordedFrameBlock(void* /*unused*/, std::uint32_t sequence,
                                      std::uint32_t firstFrame, std::uint32_t frameCount,
                                      std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getRecordedFrameBlock, sequence, firstFrame,
                     frameCount);
}

const std::uint8_t* expGetRecordedFrameBlockResult(void* /*unused*/, std::int64_t* frames,
                                                   std::uint32_t* status,
                                                   std::int32_t cameraId) noexcept
{
    return imageOnGrabber(cameraId, &CQuorGrabber::getRecordedFrameBlockResult, frames, status);
}

const std::uint8_t* expGetRecordedFrameBlockInfo(void* /*unused*/, std::uint32_t index,
                                                 std::uint64_t* header, std::uint8_t* flags,
                                                 std::uint8_t* extra,
                                                 std::int32_t cameraId) noexcept
{
    return imageOnGrabber(cameraId, &CQuorGrabber::getRecordedFrameBlockInfo, index, header, flags,
                          extra);
}

std::int32_t expAbortCurrentFrameBlockRequest(std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::abortCurrentFrameBlockRequest);
}
