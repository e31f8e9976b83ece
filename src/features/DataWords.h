/// What hosts keep in the camera: four data words, of which three may hold colour factors.
#ifndef TELVO_SRC_FEATURES_DATAWORDS_H
#define TELVO_SRC_FEATURES_DATAWORDS_H

#include "CameraSettings.h"
#include "Outcome.h"

#include <cstdint>

/// The word of the host's own number.
constexpr std::int32_t kCustomInformation = 3;

/// @param index  0 to 3: "Data00" to "Data03"
Outcome setCustomData(CameraSettings& camera, std::int32_t index, std::int32_t value);
/// 0 when the word cannot be read.
Reading<std::int32_t> getCustomData(CameraSettings& camera, std::int32_t index);

/// Keeps the factors, and writes them into the first three words.
void setColorInformation(CameraSettings& camera, const ColorFactors& factors);
/// Whether the camera is a colour camera, and the factors that it has kept, if so.
void readColorInformation(CameraSettings& camera);

#endif
