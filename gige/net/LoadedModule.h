#ifndef TELVO_GIGE_NET_LOADEDMODULE_H
#define TELVO_GIGE_NET_LOADEDMODULE_H

namespace gige::net
{

/// Keeps the program or shared library that contains this code loaded until the process ends: for a
/// thread that nobody waits for and that has yet to return into it. Any thread, any number of
/// times.
void keepLoaded() noexcept;

} // namespace gige::net

#endif
