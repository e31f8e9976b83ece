#ifndef TELVO_TOOLS_TELVO_DOWNLOAD_H
#define TELVO_TOOLS_TELVO_DOWNLOAD_H

#include "CameraChoice.h"
#include "CaptureOptions.h"
#include "Demosaic.h"
#include "FrameRange.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace telvo
{

struct DownloadOptions {
    CamerasOptions cameras;
    CaptureOptions capture;
    std::string format; // as parseFileFormat() takes it
    std::uint32_t sequence = 0;
    FrameRange range;
    std::filesystem::path out;
    std::filesystem::path sidecar; // empty: beside the output
    std::uint32_t fps = 25;        // of a video when it is played
    bool colour = false;
    std::string filter = "RG";
    bool keepHeader = false;
    bool force = false;
    bool resume = false;
    bool json = false;
};

/// Reads frames out of the cameras' memories, of all at once, and writes them, and what is known of
/// them beside.
/// Throws UsageError, and Failure also where the result is less than was asked for.
void runDownload(const DownloadOptions& options);

} // namespace telvo

#endif
