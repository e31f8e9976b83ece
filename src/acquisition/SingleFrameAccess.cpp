// One recorded frame by its number, read into the single image buffer.
#include "CQuorGrabber.h"
#include "FrameHeader.h"
#include "LinkLimits.h"
#include "LogText.h"
#include "SingleImageRead.h"

#include <cinttypes>

namespace
{
constexpr std::int32_t kTries = 8;
}

bool CQuorGrabber::reserveSingleImageBuffer()
{
    const std::uint32_t frameSize = mGeometry.frameSize();
    if (isStreamInUse() || frameSize == 0) {
        return false;
    }
    if (mSingleImageBuffer == nullptr || mSingleImageBuffer->GetSize() < frameSize) {
        allocateSingleImageBuffer(frameSize);
    }
    return mSingleImageBuffer != nullptr;
}

bool CQuorGrabber::readSingleFrame(std::int64_t frame)
{
    using Outcome = SingleImageRead::Outcome;
    const auto request = [&] { mFeatures->streamSingleFrame->SetValue(frame); };
    for (std::int32_t i = 0; i < kTries && !mIsConnectionLost; ++i) {
        const SingleImageRead read = readSingleImage(mStream, *mSingleImageBuffer, request);
        if (read.outcome == Outcome::Complete) {
            return true;
        }
        if (read.outcome == Outcome::InternalError) {
            logLine("Internal error get single frame %" PRId64 " %s Retries %d", frame,
                    read.error.GetCodeString().GetAscii(), i);
            raiseCurrentInterPacketDelay();
            if (i == kTries - 1) {
                return true; // a damaged frame at last, rather than none
            }
        }
        if (read.outcome == Outcome::ExternalError) {
            logLine("External error get single frame %" PRId64 " %s Retries %d", frame,
                    read.error.GetCodeString().GetAscii(), i);
            takeBack(mStream);
        }
    }
    return false;
}

const std::uint8_t* CQuorGrabber::getFramePointer(std::int64_t frame, std::uint64_t* header,
                                                  std::uint8_t* flags, std::uint8_t* extra)
{
    if (mIsConnectionLost || mFeatures->streamSingleFrame == nullptr ||
        !reserveSingleImageBuffer() || !readSingleFrame(frame)) {
        return nullptr;
    }
    const auto decoded =
        decodeFrameHeader({mSingleImageBuffer->GetDataPointer(), mSingleImageBuffer->GetSize()});
    if (!decoded) {
        return nullptr;
    }
    *header = decoded->value;
    *flags = decoded->flags;
    *extra = decoded->extra;
    return mSingleImageBuffer->GetDataPointer();
}

void CQuorGrabber::raiseCurrentInterPacketDelay()
{
    const std::int32_t raised = raisedInterPacketDelay(mTransfer.currentInterPacketDelay,
                                                       mTransfer.defaultInterPacketDelay);
    mTransfer.currentInterPacketDelay = raised;
    setInterPacketDelay(raised);
}
