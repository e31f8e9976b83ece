#ifndef TELVO_TOOLS_TELVO_SERIESTRANSFER_H
#define TELVO_TOOLS_TELVO_SERIESTRANSFER_H

#include "DownloadSeries.h"
#include "DownloadTarget.h"
#include "Recording.h"
#include "TransferProgress.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace telvo
{

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
/// @param beside  see TransferProgress
Outcome writeSeries(const DownloadOptions& options, DownloadTarget& target,
                    const CameraSession& camera, const Recording& recording,
                    const PictureStyle& style, DownloadSeries series,
                    const TransferProgress::ShowText& beside);

} // namespace telvo

#endif
