#ifndef TELVO_TOOLS_TELVO_CAMERACHOICE_H
#define TELVO_TOOLS_TELVO_CAMERACHOICE_H

#include "CameraSearch.h"
#include "CameraSession.h"

#include <CLI/CLI.hpp>
#include <string>

namespace telvo
{

/// Which camera a command is for.
struct CameraOptions {
    std::string camera; // MAC, IP or user-defined name; empty: the only one found
    SearchOptions search;
};

/// Adds --interface and --timeout. The options outlive the command.
void addSearchOptions(CLI::App& command, SearchOptions& options);

/// Adds --camera and the search options. The options outlive the command.
void addCameraOptions(CLI::App& command, CameraOptions& options);

/// Finds the camera. Throws Failure if there is none that can be connected to, UsageError if there
/// are several to choose from.
CameraAddress chooseCamera(const CameraOptions& options);

} // namespace telvo

#endif
