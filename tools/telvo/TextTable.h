#ifndef TELVO_TOOLS_TELVO_TEXTTABLE_H
#define TELVO_TOOLS_TELVO_TEXTTABLE_H

#include <string>
#include <vector>

namespace telvo
{

/// Rows as lines with aligned columns, two spaces apart, without trailing spaces.
/// Rows may differ in length. Control characters become '?': some texts come from the network.
std::string formatTable(const std::vector<std::vector<std::string>>& rows);

} // namespace telvo

#endif
