#ifndef TELVO_GIGE_LOG_STACKLOG_H
#define TELVO_GIGE_LOG_STACKLOG_H

#include "Reason.h"

#include <string_view>

namespace gige::log
{

/// Tells whoever looks why pictures do not come: "10.0.0.7: no camera answers … -> is it …". The
/// same line at most once a second, with the number of those between. Costs a few system calls when
/// nobody looks, waits for nobody, and never fails. Threads: any, also in exit handlers; not for
/// every packet.
/// @param device  its address; empty: the reason names it, or there is none
void say(std::string_view device, const Reason& reason) noexcept;

} // namespace gige::log

#endif
