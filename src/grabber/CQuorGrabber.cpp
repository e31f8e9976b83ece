#include "CQuorGrabber.h"

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

CQuorGrabber::CQuorGrabber() : mLinkLossSink(std::make_shared<LinkLossSink>(*this)) {}

CQuorGrabber::~CQuorGrabber()
{
    attempt([this] { mModes.endAcquisitionThread(); });
    attempt([this] { mModes.endReadoutThread(); });
    if (mLink.stream.IsOpen()) {
        (void)mLink.stream.Close();
    }
    mModes.releaseImageBuffers();
    mSingleImage.release();
    if (!mLink.isLost) {
        attempt([this] { releaseDevice(); });
    }
    mLinkLossSink->leave();
    mModes.awaitOverdueThreads(); // what they waited for has failed by now
    logLine("Grabber disconnected!.");
}

void CQuorGrabber::releaseDevice()
{
    constexpr std::uint32_t kStreamChannel = 0;
    PvDevice& device = mLink.device;
    if (device.IsConnected()) {
        logLine("Unregister event sink.");
        (void)device.UnregisterEventSink(mLinkLossSink.get());
    }
    (void)device.ResetStreamDestination(kStreamChannel);
    if (!device.IsConnected()) {
        return;
    }
    writeUserDefinedName(mIdentity, mLink.features);
    (void)device.Disconnect();
}

TelvoChangedCallback CQuorGrabber::noteLinkLost()
{
    if (mLink.isLost.exchange(true)) {
        return nullptr;
    }
    logLine("Connection to device lost!");
    mModes.blocks().abortCurrentFrameBlockRequest(); // whoever waits for one must not for ever
    return mChangedCallback;
}
