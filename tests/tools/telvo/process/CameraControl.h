#ifndef TELVO_TESTS_TOOLS_TELVO_PROCESS_CAMERACONTROL_H
#define TELVO_TESTS_TOOLS_TELVO_PROCESS_CAMERACONTROL_H

#include "VirtualCamera.h"

/// Whether nobody controls the camera.
bool isFree(const camera::VirtualCamera& camera);

#endif
