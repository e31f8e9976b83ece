/// The little that the panel asks of the system; one source per system.
#ifndef TELVO_TOOLS_TELVO_PANEL_WEB_PANELSYSTEM_H
#define TELVO_TOOLS_TELVO_PANEL_WEB_PANELSYSTEM_H

#include <functional>
#include <string>

namespace telvo
{

/// Whether a port that was in use a moment ago has to be asked for with SO_REUSEADDR. On Windows
/// that would let another program take the port, too.
extern const bool kReusesAddress;

/// Shows an address in the user's browser. What does that may stay as long as the browser does, so
/// that it is not waited for.
/// @return tells whether there is no browser to be had, as far as is known by then
std::function<bool()> openBrowser(const std::string& url);

} // namespace telvo

#endif
