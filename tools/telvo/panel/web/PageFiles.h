#ifndef TELVO_TOOLS_TELVO_PANEL_WEB_PAGEFILES_H
#define TELVO_TOOLS_TELVO_PANEL_WEB_PAGEFILES_H

#include <span>
#include <string_view>

namespace telvo
{

/// A file of the page, which is part of the program.
struct PageFile {
    std::string_view name; // "panel.css"
    std::string_view type; // "text/css; charset=utf-8"
    std::string_view bytes;
};

/// All of them, by name.
std::span<const PageFile> pageFiles();

} // namespace telvo

#endif
