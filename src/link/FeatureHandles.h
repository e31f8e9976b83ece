#ifndef TELVO_SRC_LINK_FEATUREHANDLES_H
#define TELVO_SRC_LINK_FEATUREHANDLES_H

#include "PvGenParameterArray.h"

/// Features that are looked up once, at initialisation. A handle is null while unbound, and when
/// the camera lacks the feature or has it with another type.
struct FeatureHandles {
    PvGenCommand* streamGetInfoFrame = nullptr;
    PvGenInteger* streamSingleFrame = nullptr;
    PvGenCommand* acquisitionStart = nullptr;
    PvGenCommand* acquisitionStop = nullptr;
    PvGenCommand* recordStart = nullptr;
    PvGenCommand* recordStop = nullptr;
    PvGenEnum* cameraState = nullptr;
    PvGenInteger* exposureTimeRaw = nullptr;
    PvGenInteger* acquisitionFrameRateRaw = nullptr;
    PvGenInteger* recordCurrentSequenceNumber = nullptr;
    PvGenInteger* recordTrailer = nullptr;
    PvGenInteger* recordMaxFramesPerSequence = nullptr;
    PvGenInteger* recordNumberOfFrames = nullptr;
    PvGenInteger* recordNumberOfFramesPerSequence = nullptr;
    PvGenInteger* blackLevelRaw = nullptr;
    PvGenInteger* gainRaw = nullptr;
    PvGenEnum* acquisitionSource = nullptr;
    PvGenEnum* multipleSlopeMode = nullptr;
    PvGenInteger* multipleSlopeDualRaw = nullptr;
    PvGenInteger* multipleSlopeTripleRaw = nullptr;
    PvGenInteger* temperature = nullptr;
    PvGenEnum* extTriggerPolarity = nullptr;
    PvGenBoolean* extTriggerEnable = nullptr;
    PvGenBoolean* syncInEnable = nullptr;
    PvGenEnum* syncInPolarity = nullptr;
    PvGenEnum* syncOutSelect = nullptr;
    PvGenEnum* syncARMPolarity = nullptr;
    PvGenInteger* recordBurstCnt = nullptr;
    PvGenBoolean* decimationXY = nullptr;
    PvGenBoolean* recordStandby = nullptr;
    PvGenBoolean* recordTrailerRecordingActive = nullptr;
    PvGenEnum* userSetSelector = nullptr;
    PvGenEnum* userSetDefaultSelector = nullptr;
    PvGenCommand* userSetSave = nullptr;

    bool operator==(const FeatureHandles&) const = default;
};

/// Looks every handle up, in the order above.
/// @param parameters  the camera's features; null binds nothing
FeatureHandles bindFeatureHandles(PvGenParameterArray* parameters);

#endif
