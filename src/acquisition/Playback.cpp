// Playback, the mode in which the camera delivers recorded frames, and the source of its images.
#include "LinkPacing.h"
#include "LogText.h"
#include "ModeControl.h"

bool ModeControl::canAcquire() const
{
    return mCamera.link.device.IsConnected() &&
           mCamera.link.features->acquisitionStart != nullptr &&
           mCamera.link.features->acquisitionStop != nullptr;
}

Outcome ModeControl::startPlaybackMode()
{
    logLine("Starting PlaybackMode!");
    if (!mCamera.link.device.IsConnected() || mCamera.link.isLost) {
        return Outcome::Failed;
    }
    execute(mCamera.link.features->acquisitionStop);
    (void)mCamera.link.stream.FlushPacketQueue();
    const std::int32_t delay = mCamera.link.transfer.defaultInterPacketDelay;
    mCamera.link.transfer.currentInterPacketDelay = delay;
    (void)setInterPacketDelay(mCamera.link, delay);
    (void)setOutputDatarate(mCamera.link, mCamera.link.transfer.outputDataRate);
    mMode = Mode::Playback;
    execute(mCamera.link.features->acquisitionStart);
    logLine("PlaybackMode started!");
    return Outcome::Done;
}

void ModeControl::stopPlaybackMode()
{
    logLine("Stopping PlaybackMode.");
    execute(mCamera.link.features->acquisitionStop);
    (void)mCamera.link.stream.AbortQueuedBuffers();
    logLine("PlaybackMode stopped.");
}

Outcome ModeControl::changeAquisitionSource(Mode mode)
{
    constexpr LogText<> kError("-- GEN changeAquisitionSource Error");
    const char* const source = mode == Mode::Record || mode == Mode::Live ? "Live" : "Memory";
    PvGenEnum* const feature = mCamera.link.features->acquisitionSource;
    if (feature == nullptr || !feature->SetValue(source).IsOK()) {
        kError.log();
        return Outcome::Failed;
    }
    logLine("-- GEN changeAquisitionSource: %s", source);
    return Outcome::Done;
}
