#ifndef TELVO_TOOLS_TELVO_PANEL_PANELRUN_H
#define TELVO_TOOLS_TELVO_PANEL_PANELRUN_H

#include "CameraChoice.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace telvo
{

struct PanelOptions {
    CamerasOptions cameras; // connected from the start; none: none
    std::uint32_t port = 8400;
    std::string address; // empty: this machine alone
    std::filesystem::path folder = ".";
    bool open = false;
};

/// Serves until the user asks for the end. Throws Failure.
void runPanel(const PanelOptions& options);

} // namespace telvo

#endif
