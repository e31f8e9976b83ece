#ifndef TELVO_SRC_GRABBER_CAMERAMODEL_H
#define TELVO_SRC_GRABBER_CAMERAMODEL_H

#include <cstdint>

/// Class of a camera by its model name.
struct CameraModel {
    std::int32_t type = 0;        ///< 0 to 3
    std::uint8_t caseFlag = 0;    ///< 0 or 1: second-level mark within the type
    std::int32_t fixedMaxFps = 0; ///< frames per second; 0: none
};

#endif
