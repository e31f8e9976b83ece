#ifndef TELVO_CAMERA_DESCRIPTIONXML_H
#define TELVO_CAMERA_DESCRIPTIONXML_H

#include "CameraOptions.h"

#include <string>

namespace camera
{

/// The device description for GenApi clients, schema 1.1, made from the feature table. Left out and
/// retyped features are as the options say. A feature's value lies behind its register node
/// "<name>Reg"; what the camera may change by itself is not cached.
[[nodiscard]] std::string descriptionXml(const CameraOptions& options);

/// True when the feature has an availability register in this camera's description.
[[nodiscard]] bool isConditional(const Feature& feature, const CameraOptions& options);

} // namespace camera

#endif
