#ifndef TELVO_GIGE_PV_PVRESULTS_H
#define TELVO_GIGE_PV_PVRESULTS_H

#include "ControlResult.h"
#include "PvResult.h"

/// What an outcome of the control link is called towards the library.
PvResult toPvResult(const gige::control::ControlResult& result);

#endif
