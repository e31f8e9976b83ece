/// Sorts cameras into types by their model name.
#ifndef TELVO_SRC_GRABBER_CAMERAMODEL_H
#define TELVO_SRC_GRABBER_CAMERAMODEL_H

#include "CameraSettings.h"
#include "RecordingFeatures.h"

#include <cstdint>

struct CameraModel {
    std::int32_t type = 0;        ///< 0 to 3
    std::uint8_t caseFlag = 0;    ///< 0 or 1: second-level mark within the type
    std::int32_t fixedMaxFps = 0; ///< frames per second; 0: none
};

CameraModel checkCameraType(const char* modelName);

/// Reads the sensor's size; in its place the type's own where the camera does not say.
ImageSize readSensorSize(CameraSettings& camera, const CameraModel& model);

#endif
