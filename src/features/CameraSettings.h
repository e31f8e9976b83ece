#ifndef TELVO_SRC_FEATURES_CAMERASETTINGS_H
#define TELVO_SRC_FEATURES_CAMERASETTINGS_H

#include "CameraLink.h"
#include "ColorInformation.h"
#include "GeometryCache.h"

/// How the copy of a recording to the flash card is set. The host's thread alone.
struct FlashCopy {
    /// The camera's "FlashCardWriteAfterRecordEnable" as last read or written.
    bool isAfterRecord = false;
    /// The host stopped the copy since recording started.
    bool isStopped = false;
};

/// What accessors work on: the camera, and what the library remembers of its settings.
struct CameraSettings {
    /// @param cameraLink  borrowed for this object's life
    explicit CameraSettings(CameraLink& cameraLink) : link(cameraLink) {}

    CameraLink& link;
    GeometryCache geometry;
    FlashCopy flashCopy;
    ColorInformation color;
    /// "MultisequenceAvailable": the camera's memory can hold several recordings.
    bool isMultiSequenceAvailable = false;
};

#endif
