// The camera's description of its recording, read into the single image buffer.
#include "CQuorGrabber.h"
#include "Commands.h"
#include "InfoFrame.h"
#include "LogText.h"
#include "SingleImageRead.h"

namespace
{

constexpr std::int32_t kTries = 3;

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

bool CQuorGrabber::readInfoFrame()
{
    using Outcome = SingleImageRead::Outcome;
    const auto request = [this] { execute(mFeatures->streamGetInfoFrame); };
    for (std::int32_t i = 0; i < kTries; ++i) {
        const SingleImageRead read = readSingleImage(mStream, *mSingleImageBuffer, request);
        if (read.outcome == Outcome::Complete) {
            return true;
        }
        if (read.outcome == Outcome::InternalError) {
            logLine("Internal error get info frame %s Retries %d",
                    read.error.GetCodeString().GetAscii(), i);
            raiseCurrentInterPacketDelay();
        }
        if (read.outcome == Outcome::ExternalError) {
            logLine("External error get info frame %s Retries %d",
                    read.error.GetCodeString().GetAscii(), i);
            takeBack(mStream);
        }
    }
    return false;
}

const std::uint8_t* CQuorGrabber::getRecordInfoFramePointer(std::uint32_t* width,
                                                            std::uint32_t* height,
                                                            std::uint32_t* recordMode,
                                                            std::uint32_t* sequences)
{
    logLine("Get info frame pointer");
    if (mIsConnectionLost) {
        return nullptr;
    }
    if (mFeatures->streamGetInfoFrame == nullptr) {
        logLine("Function not available!");
        return nullptr;
    }
    if (!reserveSingleImageBuffer() || !readInfoFrame()) {
        return nullptr;
    }
    const auto info =
        decodeInfoFrame({mSingleImageBuffer->GetDataPointer(), mSingleImageBuffer->GetSize()});
    if (!info) {
        return nullptr;
    }
    logInfoFrame(*info);
    *width = info->width;
    *height = info->height;
    *recordMode = info->recordMode;
    *sequences = plausibleSequences(*info);
    return mSingleImageBuffer->GetDataPointer();
}
