#ifndef TELVO_GIGE_PV_GENRESULTS_H
#define TELVO_GIGE_PV_GENRESULTS_H

#include "GenApiStatus.h"
#include "PvResult.h"

/// What an outcome of the feature tree is called towards the library.
PvResult toPvResult(gige::genapi::Status status);

#endif
