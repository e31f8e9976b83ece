#ifndef TELVO_TOOLS_TELVO_RECORDINGDESCRIPTION_H
#define TELVO_TOOLS_TELVO_RECORDINGDESCRIPTION_H

#include "FrameSource.h"
#include "Json.h"
#include "PictureStyle.h"
#include "Recording.h"

#include <cstdint>
#include <optional>
#include <string>

// What is told of a camera and its recording, as JSON.
namespace telvo
{

Json describeCamera(const CameraSession& camera);

/// The settings that the camera keeps; those of the connection say nothing of the pictures.
Json describeSettings(const CameraSession& camera);

/// A sequence, how it ended and where its trigger lies.
struct SequenceFacts {
    Recording recording;
    std::optional<std::uint32_t> trigger; // frame
    const char* end;                      // cause
};

Json describeSequence(const SequenceFacts& facts);

Json describeSelection(FrameSelection selection);

/// What the pictures written are.
struct PictureDescription {
    std::string fileFormat; // as on the command line
    PictureStyle style;
    bool isColourCamera;
    BayerPattern filter; // of a colour camera
    bool hasHeader;      // the frames' headers are in them
};

Json describePictures(const RecordingInfo& info, const PictureDescription& pictures);

} // namespace telvo

#endif
