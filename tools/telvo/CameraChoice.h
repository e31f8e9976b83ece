#ifndef TELVO_TOOLS_TELVO_CAMERACHOICE_H
#define TELVO_TOOLS_TELVO_CAMERACHOICE_H

#include "CameraAddress.h"
#include "CameraSearch.h"
#include "CameraSession.h"
#include "Command.h"

#include <string>
#include <vector>

namespace telvo
{

/// Which camera a command is for.
struct CameraOptions {
    std::string camera; // MAC, IP, user-defined name or serial number; empty: the only one found
    SearchOptions search;
};

/// Adds --interface and --timeout. The options outlive the command.
void addSearchOptions(const Command& command, SearchOptions& options);

/// Adds --camera and the search options. The options outlive the command.
void addCameraOptions(const Command& command, CameraOptions& options);

/// Which cameras a command is for that works with several.
struct CamerasOptions {
    std::vector<std::string> cameras; // each as above; none: the only one found
    SearchOptions search;
};

/// While it lives, the camera and the search of a command that names none. One at a time.
class UsualCamera
{
  public:
    explicit UsualCamera(const CameraOptions& options);
    ~UsualCamera();
    UsualCamera(const UsualCamera&) = delete;
    UsualCamera& operator=(const UsualCamera&) = delete;
};

/// How the library is to reach a camera that answered.
CameraAddress addressOf(const gige::control::DiscoveredDevice& device);

/// Finds the camera. Throws Failure if there is none that can be connected to, UsageError if there
/// are several to choose from.
CameraAddress chooseCamera(const CameraOptions& options);

/// Adds --camera, to be given once for each camera, and the search options.
void addCamerasOptions(const Command& command, CamerasOptions& options);

/// The same for several; each is there once.
std::vector<CameraAddress> chooseCameras(const CamerasOptions& options);

} // namespace telvo

#endif
