/// The little that the panel asks of the system; one source per system.
#ifndef TELVO_TOOLS_TELVO_PANEL_WEB_PANELSYSTEM_H
#define TELVO_TOOLS_TELVO_PANEL_WEB_PANELSYSTEM_H

#include <string>

namespace telvo
{

/// Whether a port that was in use a moment ago has to be asked for with SO_REUSEADDR. On Windows
/// that would let another program take the port, too.
extern const bool kReusesAddress;

/// Shows the address in the user's browser. False: there is none to be had.
bool openBrowser(const std::string& url);

} // namespace telvo

#endif
