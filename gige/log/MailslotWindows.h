/// Messages from any process of this machine to the one that has a mailslot.
#ifndef TELVO_GIGE_LOG_MAILSLOTWINDOWS_H
#define TELVO_GIGE_LOG_MAILSLOTWINDOWS_H

#include <string_view>

namespace gige::log
{

/// Waits for nobody and needs no memory: what finds no room is lost, for some systems keep a few
/// messages only.
/// @param mailslot  its path, such as \\.\mailslot\name
/// @return false: nobody has it
bool post(const char* mailslot, std::string_view message) noexcept;

} // namespace gige::log

#endif
