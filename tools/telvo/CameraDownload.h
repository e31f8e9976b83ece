#ifndef TELVO_TOOLS_TELVO_CAMERADOWNLOAD_H
#define TELVO_TOOLS_TELVO_CAMERADOWNLOAD_H

#include "CameraSession.h"
#include "Download.h"
#include "DownloadTarget.h"
#include "SeriesTransfer.h"

#include <stop_token>

namespace telvo
{

/// Whether the camera's pictures have colours.
bool hasColours(const CameraSession& camera);

/// Reads what the options ask for out of the memory of a camera that is at rest, and writes it.
/// Throws Failure where nothing is written; what ended it early is in the outcome.
/// @param target  its place is used up
/// @param cancel  what is written by then is kept
Outcome downloadFrom(const CameraSession& camera, const DownloadOptions& options,
                     DownloadTarget& target, const FollowTransfer& follow,
                     const std::stop_token& cancel);

} // namespace telvo

#endif
