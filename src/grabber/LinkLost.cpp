// What the stack tells about the device. Only the loss of the link matters to us.

#include "CQuorGrabber.h"
#include "CQuorReadoutThread.h"
#include "LogText.h"

void CQuorGrabber::OnNotification1(PvDevice* /*device*/) {}
void CQuorGrabber::OnNotification2(PvDevice* /*device*/) {}
void CQuorGrabber::OnNotification3(PvDevice* /*device*/) {}
void CQuorGrabber::OnNotification5(PvDevice* /*device*/) {}

void CQuorGrabber::OnLinkDisconnected(PvDevice* /*device*/)
{
    if (mIsConnectionLost.exchange(true)) {
        return;
    }
    logLine("Connection to device lost!");
    if (const auto readoutThread = mReadoutThread.get()) {
        readoutThread->abortRequest(); // a host that waits for its block must not wait forever
    }
    if (const TelvoChangedCallback callback = mChangedCallback) {
        callback(0);
    }
}
