#include "CQuorAcquisitionThread.h"

#include "FrameHeader.h"
#include "LinkPacing.h"
#include "LogText.h"
#include "RecordedSequences.h"

namespace
{

constexpr DWORD kBackOffInterval = 1000; // ms
constexpr DWORD kRestartInterval = 1500; // ms
constexpr DWORD kRestartPause = 50;      // ms between "AcquisitionStop" and "AcquisitionStart"

/// Stamps the time if more than `interval` ms have passed since the last stamp.
bool isDue(std::atomic<DWORD>& last, DWORD interval)
{
    const DWORD now = GetTickCount();
    if (now - last <= interval) {
        return false;
    }
    last = now;
    return true;
}

} // namespace

CQuorAcquisitionThread::~CQuorAcquisitionThread()
{
    finish();
}

StartResult CQuorAcquisitionThread::initialize(CameraSettings& camera, LiveImages& images,
                                               std::uint32_t bufferCount, std::uint32_t frameSize,
                                               ImageKind kind)
{
    constexpr OpenTexts kTexts{"!! Error Initialize acquisition thread. Stream not open.",
                               "!! Error Initialize acquisition thread. Can't set buffer count."};
    mImages = &images;
    mKind = kind;
    // The first image after a record start was taken before it.
    mSkipNextFrame = kind == ImageKind::RecordPreview;
    const StartResult result = open(camera.link, frameSize, bufferCount, kTexts);
    if (result != StartResult::Started) {
        return result;
    }
    sendInterPacketDelay(camera.link.transfer.defaultInterPacketDelay);
    sendDataRate(camera.link.transfer.outputDataRate);
    if (kind == ImageKind::RecordPreview) {
        mMaxFrames = read(camera, kGetMaxFramesPerSequence).value.value_or(0);
    }
    logLine("Max frames count %d", mMaxFrames);
    return StartResult::Started;
}

DWORD CQuorAcquisitionThread::Function()
{
    logLine("Acquisition thread started!");
    pipeline().start();
    mTotal = FrameCounterTotal(mMaxFrames);
    mFrameCount = 0;
    takeImages();
    logLine("Acquisition thread stopped!");
    return 0;
}

void CQuorAcquisitionThread::handleImage(PvBuffer& buffer)
{
    const std::span<const std::uint8_t> image(buffer.GetDataPointer(), buffer.GetSize());
    if (mIsCounting) {
        if (const auto header = decodeFrameHeader(image)) {
            mFrameCount = mTotal.add(header->counter);
        }
    }
    if (mSkipNextFrame) {
        mSkipNextFrame = false;
    } else {
        mImages->put(image);
    }
    pipeline().release(&buffer);
}

void CQuorAcquisitionThread::handleImageError(PvBuffer& buffer, const PvResult& error)
{
    logLine("Internal acquisition state: %s!", error.GetCodeString().GetAscii());
    pipeline().release(&buffer);
    slowDown(error);
}

void CQuorAcquisitionThread::slowDown(const PvResult& error)
{
    const TransferSettings& transfer = link().transfer;
    if (error == PvResult::Code::ImageError) {
        if (isDue(mLastDataRateBackOff, kBackOffInterval)) {
            sendDataRate(raisedDataRate(dataRate(), transfer.outputDataRate));
        }
    } else if (isDue(mLastDelayBackOff, kBackOffInterval)) {
        sendInterPacketDelay(
            raisedInterPacketDelay(interPacketDelay(), transfer.defaultInterPacketDelay));
    }
}

void CQuorAcquisitionThread::handleRetrievalError(const PvResult& error)
{
    if (isStopRequested()) {
        return; // the stop has woken the retrieval: no error of the stream
    }
    logLine("External acquisition state: %s!", error.GetCodeString().GetAscii());
    if (mKind == ImageKind::Live) {
        restartAcquisition();
    }
}

void CQuorAcquisitionThread::restartAcquisition()
{
    const std::lock_guard lock(mRestartLock);
    if (!mMayRestart || !isDue(mLastRestart, kRestartInterval)) {
        return;
    }
    logLine("Restart acquisition!");
    execute(link().features->acquisitionStop);
    Sleep(kRestartPause);
    execute(link().features->acquisitionStart);
}

void CQuorAcquisitionThread::forbidRestarts()
{
    const std::lock_guard lock(mRestartLock);
    mMayRestart = false;
}

void CQuorAcquisitionThread::allowRestarts()
{
    const DWORD now = GetTickCount();
    mLastDelayBackOff = now;
    mLastDataRateBackOff = now;
    mLastRestart = now;
    const std::lock_guard lock(mRestartLock);
    mMayRestart = true;
}
