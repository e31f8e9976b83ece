#include "RecordedFrames.h"

#include "LinkPacing.h"
#include "LogText.h"
#include "SingleImageRead.h"

#include <cinttypes>

namespace
{

constexpr std::int32_t kInfoFrameTries = 3;
constexpr std::int32_t kFrameTries = 8;

void logInfoFrame(const InfoFrame& info)
{
    logLine("Checking stop pointers for %d sequences.", static_cast<std::int32_t>(info.sequences));
    for (std::size_t i = 0; i < kMaxSequences; ++i) {
        logLine("Stop pointer %d: %u", static_cast<std::int32_t>(i), info.stopPointers[i]);
    }
    logLine("Recorded image size %d x %d Record mode %d Sequences %d",
            static_cast<std::int32_t>(info.width), static_cast<std::int32_t>(info.height),
            static_cast<std::int32_t>(info.recordMode),
            static_cast<std::int32_t>(plausibleSequences(info)));
}

} // namespace

std::optional<InfoFrameRead> RecordedFrames::getRecordInfoFramePointer()
{
    logLine("Get info frame pointer");
    if (mCamera.link.isLost) {
        return std::nullopt;
    }
    if (mCamera.link.features->streamGetInfoFrame == nullptr) {
        logLine("Function not available!");
        return std::nullopt;
    }
    if (!reserveBuffer() || !readInfoFrame()) {
        return std::nullopt;
    }
    const std::uint8_t* const data = mBuffer.get()->GetDataPointer();
    const auto info = decodeInfoFrame({data, mBuffer.get()->GetSize()});
    if (!info) {
        return std::nullopt;
    }
    logInfoFrame(*info);
    return InfoFrameRead{.data = data, .info = *info};
}

std::optional<HeadedFrame> RecordedFrames::getFramePointer(std::int64_t frame)
{
    if (mCamera.link.isLost || mCamera.link.features->streamSingleFrame == nullptr ||
        !reserveBuffer() || !readSingleFrame(frame)) {
        return std::nullopt;
    }
    return headedFrame({mBuffer.get()->GetDataPointer(), mBuffer.get()->GetSize()});
}

bool RecordedFrames::reserveBuffer()
{
    const std::uint32_t frameSize = mCamera.geometry.frameSize();
    return !mModes.isStreamInUse() && frameSize != 0 && mBuffer.reserve(frameSize);
}

bool RecordedFrames::readInfoFrame()
{
    using End = SingleImageRead::End;
    const auto request = [this] { execute(mCamera.link.features->streamGetInfoFrame); };
    for (std::int32_t i = 0; i < kInfoFrameTries; ++i) {
        const SingleImageRead read = readSingleImage(mCamera.link.stream, *mBuffer.get(), request);
        if (read.end == End::Complete) {
            return true;
        }
        if (read.end == End::InternalError) {
            logLine("Internal error get info frame %s Retries %d",
                    read.error.GetCodeString().GetAscii(), i);
            raiseInterPacketDelay();
        }
        if (read.end == End::ExternalError) {
            logLine("External error get info frame %s Retries %d",
                    read.error.GetCodeString().GetAscii(), i);
            takeBack(mCamera.link.stream);
        }
    }
    return false;
}

bool RecordedFrames::readSingleFrame(std::int64_t frame)
{
    using End = SingleImageRead::End;
    const auto request = [&] { (void)mCamera.link.features->streamSingleFrame->SetValue(frame); };
    for (std::int32_t i = 0; i < kFrameTries && !mCamera.link.isLost; ++i) {
        const SingleImageRead read = readSingleImage(mCamera.link.stream, *mBuffer.get(), request);
        if (read.end == End::Complete) {
            return true;
        }
        if (read.end == End::InternalError) {
            logLine("Internal error get single frame %" PRId64 " %s Retries %d", frame,
                    read.error.GetCodeString().GetAscii(), i);
            raiseInterPacketDelay();
            if (i == kFrameTries - 1) {
                return true; // a damaged frame at last, rather than none
            }
        }
        if (read.end == End::ExternalError) {
            logLine("External error get single frame %" PRId64 " %s Retries %d", frame,
                    read.error.GetCodeString().GetAscii(), i);
            takeBack(mCamera.link.stream);
        }
    }
    return false;
}

void RecordedFrames::raiseInterPacketDelay()
{
    TransferSettings& transfer = mCamera.link.transfer;
    const std::int32_t raised =
        raisedInterPacketDelay(transfer.currentInterPacketDelay, transfer.defaultInterPacketDelay);
    transfer.currentInterPacketDelay = raised;
    (void)setInterPacketDelay(mCamera.link, raised);
}
