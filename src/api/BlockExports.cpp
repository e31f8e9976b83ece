#include "ExportFrame.h"

std::int32_t expStartFrameBlockTransfer(std::int32_t cameraId) noexcept
{
    return onModes(cameraId, &ModeControl::startFrameBlockTransfer);
}

std::int32_t expStopFrameBlockTransfer(std::int32_t cameraId) noexcept
{
    return onModes(cameraId, &ModeControl::stopCurrentMode);
}

std::int32_t expGetFrameBlockSize(std::uint32_t* frames, std::int32_t cameraId) noexcept
{
    return onModes(
        cameraId,
        [](ModeControl& modes, std::uint32_t* out) {
            const std::optional<std::uint32_t> size = modes.blocks().getFrameBlockSize();
            *out = size.value_or(*out);
            return doneIf(size.has_value());
        },
        frames);
}

std::int32_t expGetRecordedFrameBlock(void* /*unused*/, std::uint32_t sequence,
                                      std::uint32_t firstFrame, std::uint32_t frameCount,
                                      std::int32_t cameraId) noexcept
{
    return onModes(cameraId, [=](ModeControl& modes) {
        return modes.blocks().getRecordedFrameBlock(sequence, firstFrame, frameCount);
    });
}

const std::uint8_t* expGetRecordedFrameBlockResult(void* /*unused*/, std::int64_t* frames,
                                                   std::uint32_t* status,
                                                   std::int32_t cameraId) noexcept
{
    const auto collect = [](CQuorGrabber& grabber, std::int64_t* framesOut,
                            std::uint32_t* statusOut) -> const std::uint8_t* {
        const auto block = grabber.modes().blocks().getRecordedFrameBlockResult();
        if (!block) {
            return nullptr; // link lost
        }
        *statusOut = static_cast<std::uint32_t>(block->result);
        if (block->result == RequestResult::Complete) {
            *framesOut = block->frames;
        }
        return block->data;
    };
    return imageOnGrabber(cameraId, collect, frames, status);
}

const std::uint8_t* expGetRecordedFrameBlockInfo(void* /*unused*/, std::uint32_t index,
                                                 std::uint64_t* header, std::uint8_t* flags,
                                                 std::uint8_t* extra,
                                                 std::int32_t cameraId) noexcept
{
    const auto find = [index](CQuorGrabber& grabber) {
        return grabber.modes().blocks().getRecordedFrameBlockInfo(index);
    };
    return frameOnGrabber(cameraId, find, header, flags, extra);
}

std::int32_t expAbortCurrentFrameBlockRequest(std::int32_t cameraId) noexcept
{
    return onModes(cameraId,
                   [](ModeControl& modes) { modes.blocks().abortCurrentFrameBlockRequest(); });
}
