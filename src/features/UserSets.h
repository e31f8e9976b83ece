/// The camera's stored settings, and the check that it starts with ours.
#ifndef TELVO_SRC_FEATURES_USERSETS_H
#define TELVO_SRC_FEATURES_USERSETS_H

#include "CameraSettings.h"
#include "Outcome.h"

Outcome saveUserSet(CameraSettings& camera);

/// Makes a camera that does not start with user set 1 do so, with the whole sensor as its image.
/// @return Failed when it had to, however well it went: the host connects once more and finds a
/// camera that starts with these settings
Outcome checkUserSetSelection(CameraSettings& camera);

#endif
