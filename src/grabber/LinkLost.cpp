// What becomes of a camera whose link is lost.

#include "CQuorGrabber.h"
#include "CQuorReadoutThread.h"
#include "LogText.h"

TelvoChangedCallback CQuorGrabber::noteLinkLost()
{
    if (mIsConnectionLost.exchange(true)) {
        return nullptr;
    }
    logLine("Connection to device lost!");
    if (const auto readoutThread = mReadoutThread.get()) {
        readoutThread->abortRequest(); // a host that waits for its block must not wait forever
    }
    return mChangedCallback;
}
