#ifndef TELVO_TESTS_STANDIN_DEFAULTCAMERA_H
#define TELVO_TESTS_STANDIN_DEFAULTCAMERA_H

#include "ScriptedArray.h"

/// Every feature that the library knows, of an idle monochrome 1280 x 1024 camera whose user sets
/// are prepared and whose memory holds no recording.
void addDefaultFeatures(ScriptedArray& camera);
void addDefaultLinkParameters(ScriptedArray& link);
void addDefaultStreamParameters(ScriptedArray& stream);

#endif
