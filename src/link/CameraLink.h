#ifndef TELVO_SRC_LINK_CAMERALINK_H
#define TELVO_SRC_LINK_CAMERALINK_H

#include "CameraFeatures.h"
#include "SerialLine.h"
#include "TransferSettings.h"

#include "PvDevice.h"
#include "PvStream.h"

#include <atomic>

/**
 * The way to one camera: control link, image stream and serial line, its features, and how it is
 * paced.
 *
 * Threads: the host's thread opens and closes; worker threads use what is open. What both of them
 * and the stack's thread touch is atomic.
 */
struct CameraLink {
    CameraLink() = default;
    CameraLink(const CameraLink&) = delete;
    CameraLink& operator=(const CameraLink&) = delete;

    /// Set once, by the stack's thread, when the camera no longer answers.
    std::atomic<bool> isLost = false;
    TransferSettings transfer;
    // These die in reverse order, the serial line first.
    PvDevice device;
    PvStream stream;
    SerialLine serialLine;
    CameraFeatures features{device};

    /// Whether there is a camera that may answer.
    bool isUp() const { return !isLost && device.IsConnected(); }
};

#endif
