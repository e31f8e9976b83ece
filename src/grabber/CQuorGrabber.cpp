#include "CQuorGrabber.h"

#include "CQuorAcquisitionThread.h"
#include "CQuorReadoutThread.h"
#include "FrameExchange.h"
#include "LinkLossSink.h"
#include "LogText.h"

#include <exception>

namespace
{

/// A step of the disconnect that fails for want of memory does not keep the next ones from being
/// taken.
template <typename Step>
void attempt(Step step) noexcept
{
    try {
        step();
    } catch (const std::exception&) {
        logLine("No memory to disconnect in order.");
    }
}

} // namespace

CQuorGrabber::CQuorGrabber()
    : mFrames(std::make_unique<FrameExchange>()),
      mLinkLossSink(std::make_shared<LinkLossSink>(*this))
{
}

CQuorGrabber::~CQuorGrabber()
{
    attempt([this] { endAcquisitionThread(); });
    attempt([this] { endReadoutThread(); });
    if (mStream.IsOpen()) {
        (void)mStream.Close();
    }
    releaseImageBuffers();
    releaseSingleImageBuffer();
    if (!mIsConnectionLost) {
        attempt([this] { releaseDevice(); });
    }
    mLinkLossSink->leave();
    mOverdueThreads.clear(); // what they waited for has failed by now; they use the frames
    mFrames.reset();         // deletes its lock
    logLine("Grabber disconnected!.");
}

void CQuorGrabber::releaseDevice()
{
    if (mDevice.IsConnected()) {
        logLine("Unregister event sink.");
        (void)mDevice.UnregisterEventSink(mLinkLossSink.get());
    }
    (void)mDevice.ResetStreamDestination(kStreamChannel);
    if (!mDevice.IsConnected()) {
        return;
    }
    if (mIsUserNameChanged) {
        mIsUserNameChanged = false;
        (void)writeUserDefinedName();
    }
    (void)mDevice.Disconnect();
}

void CQuorGrabber::releaseSingleImageBuffer()
{
    if (mSingleImageBuffer != nullptr) {
        mSingleImageBuffer->Free();
        mSingleImageBuffer.reset();
    }
}

void CQuorGrabber::allocateSingleImageBuffer(std::uint32_t size)
{
    releaseSingleImageBuffer();
    auto buffer = std::make_unique<PvBuffer>();
    if (size != 0 && buffer->Alloc(size).IsOK()) {
        mSingleImageBuffer = std::move(buffer);
    }
    logLine("Allocate single image buffer, Buffersize %d", static_cast<std::int32_t>(size));
}
