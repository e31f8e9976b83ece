#ifndef TELVO_GIGE_LOG_REASON_H
#define TELVO_GIGE_LOG_REASON_H

#include "Line.h"

namespace gige::log
{

/// Why pictures do not come as they should.
struct Reason {
    Line text;
    Line advice{}; // what to do; may be empty
};

} // namespace gige::log

#endif
