#ifndef TELVO_TOOLS_TELVO_COUNTTEXT_H
#define TELVO_TOOLS_TELVO_COUNTTEXT_H

#include <concepts>
#include <string>

namespace telvo
{

/// "1 frame", "12 frames". @param noun  in the singular; its plural has an "s" more
std::string countText(std::integral auto count, const char* noun)
{
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

} // namespace telvo

#endif
