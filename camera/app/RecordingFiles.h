#ifndef TELVO_CAMERA_APP_RECORDINGFILES_H
#define TELVO_CAMERA_APP_RECORDINGFILES_H

#include "VirtualCamera.h"

#include <filesystem>

namespace camera
{

/// Writes what the camera has recorded, one file for each sequence: the frames' bytes one behind
/// the other, oldest first, as a host reads them. The files are called ADDRESS-SEQUENCE.raw and
/// appear under their names once they are whole.
/// @throws std::exception naming the file that cannot be written
void saveRecordings(const VirtualCamera& camera, const std::filesystem::path& folder);

} // namespace camera

#endif
