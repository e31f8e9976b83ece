#ifndef TELVO_TOOLS_TELVO_WINDOWS1252_H
#define TELVO_TOOLS_TELVO_WINDOWS1252_H

#include <string>
#include <string_view>

namespace telvo
{

/// Windows-1252 text, as the library logs, as UTF-8. The five bytes that the code page leaves
/// undefined (81, 8D, 8F, 90, 9D) become the replacement character U+FFFD.
std::string utf8FromWindows1252(std::string_view text);

} // namespace telvo

#endif
