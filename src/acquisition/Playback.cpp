// Playback, the mode in which the camera delivers recorded frames, and the source of its images.
#include "CQuorGrabber.h"
#include "Commands.h"
#include "LogText.h"

bool CQuorGrabber::canAcquire() const
{
    return isConnected() && mFeatures->acquisitionStart != nullptr &&
           mFeatures->acquisitionStop != nullptr;
}

std::int32_t CQuorGrabber::startPlaybackMode()
{
    logLine("Starting PlaybackMode!");
    if (!isConnected() || mIsConnectionLost) {
        return kFailure;
    }
    execute(mFeatures->acquisitionStop);
    mStream.FlushPacketQueue();
    const std::int32_t delay = mTransfer.defaultInterPacketDelay;
    mTransfer.currentInterPacketDelay = delay;
    setInterPacketDelay(delay);
    SetOutputDatarate(mTransfer.outputDataRate);
    mMode.current = Mode::Playback;
    execute(mFeatures->acquisitionStart);
    logLine("PlaybackMode started!");
    return kSuccess;
}

std::int32_t CQuorGrabber::stopPlaybackMode()
{
    logLine("Stopping PlaybackMode.");
    execute(mFeatures->acquisitionStop);
    mStream.AbortQueuedBuffers();
    logLine("PlaybackMode stopped.");
    return kSuccess;
}

std::int32_t CQuorGrabber::changeAquisitionSource(Mode mode)
{
    constexpr LogText<> kError("-- GEN changeAquisitionSource Error");
    const char* const source = mode == Mode::Record || mode == Mode::Live ? "Live" : "Memory";
    PvGenEnum* const feature = mFeatures->acquisitionSource;
    if (feature == nullptr || !feature->SetValue(source).IsOK()) {
        kError.log();
        return kFailure;
    }
    logLine("-- GEN changeAquisitionSource: %s", source);
    return kSuccess;
}
