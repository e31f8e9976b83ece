#ifndef TELVO_TOOLS_TELVO_SERIESTRANSFER_H
#define TELVO_TOOLS_TELVO_SERIESTRANSFER_H

#include "DownloadSeries.h"
#include "DownloadTarget.h"
#include "Recording.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <stop_token>
#include <string>

namespace telvo
{

/// How far a transfer is.
struct TransferStep {
    std::uint64_t done = 0; // frames
    std::uint64_t of = 0;
    std::uint64_t frameSize = 0; // bytes
};

/// Called before the first frame and after each.
using FollowTransfer = std::function<void(const TransferStep&)>;

/// What came of a download.
struct Outcome {
    DownloadSeries series;
    RecordingInfo info;
    std::uint64_t transferred;          // frames, of this time
    std::chrono::duration<double> time; // likewise
    std::string interruption;           // empty: none
};

/// Reads what is not there yet of a series and writes it, and the sidecar. Throws Failure where
/// nothing is written.
/// @param target  its place is used up
Outcome writeSeries(const DownloadOptions& options, DownloadTarget& target,
                    const CameraSession& camera, const Recording& recording,
                    const PictureStyle& style, DownloadSeries series, const FollowTransfer& follow,
                    const std::stop_token& cancel);

} // namespace telvo

#endif
