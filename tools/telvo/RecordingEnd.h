#ifndef TELVO_TOOLS_TELVO_RECORDINGEND_H
#define TELVO_TOOLS_TELVO_RECORDINGEND_H

#include "CameraSession.h"

#include <cstdint>
#include <optional>

namespace telvo
{

/// What the camera does after a recording.
struct RecordingEnd {
    bool inStandby = false;   // the next trigger starts another
    bool flashCopied = false; // the recording is on the flash card, too
};

/// Ends a running recording. None: the camera copies it to its flash card now; when it has done so,
/// this is to be called once more. Throws Failure.
std::optional<RecordingEnd> stopRecording(const CameraSession& camera);

/// What stopRecording() gave, followed to the end of the copy to the flash card if there is one.
/// Throws as endRecording() does.
RecordingEnd finishRecording(const CameraSession& camera, std::optional<RecordingEnd> stopped);

/// Ends a running recording, and follows the copy to the flash card to its end. Throws Failure;
/// Cancelled when the user does not wait for the copy, which goes on then.
RecordingEnd endRecording(const CameraSession& camera);

/// Whether the camera copies a recording to its flash card.
bool isCopying(const CameraSession& camera);

/// Follows a copy to the flash card to its end. Throws as above.
void followFlashCopy(const CameraSession& camera);

/// What the camera's memory holds.
struct RecordedFrames {
    std::uint32_t count = 0; // of all sequences
    std::uint32_t width = 0; // pixels
    std::uint32_t height = 0;
};

RecordedFrames recordedFrames(const CameraSession& camera);

} // namespace telvo

#endif
