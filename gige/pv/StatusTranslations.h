/// What one layer's outcomes are called in another.
#ifndef TELVO_GIGE_PV_STATUSTRANSLATIONS_H
#define TELVO_GIGE_PV_STATUSTRANSLATIONS_H

#include "ControlStatus.h"
#include "GenApiStatus.h"
#include "PvResult.h"
#include "StreamBuffer.h"

/// An outcome of the control link, towards the library.
PvResult toPvResult(gige::control::Status status);

/// An outcome of the feature tree, towards the library.
PvResult toPvResult(gige::genapi::Status status);

/// How a block ended, towards the library.
PvResult toPvResult(gige::stream::BlockResult result);

/// An outcome of the control link, towards the feature tree.
gige::genapi::Status toPortStatus(gige::control::Status status);

#endif
