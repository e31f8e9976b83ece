#ifndef TELVO_GIGE_NET_THREADTIME_H
#define TELVO_GIGE_NET_THREADTIME_H

#include <chrono>

namespace gige::net
{

/// Processor time that the calling thread has used so far. 0: the system does not tell.
std::chrono::nanoseconds threadTime();

} // namespace gige::net

#endif
