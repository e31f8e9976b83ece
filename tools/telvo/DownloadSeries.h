#ifndef TELVO_TOOLS_TELVO_DOWNLOADSERIES_H
#define TELVO_TOOLS_TELVO_DOWNLOADSERIES_H

#include "CameraSession.h"
#include "FrameCounter.h"
#include "FrameSource.h"
#include "Sidecar.h"

#include <cstdint>

namespace telvo
{

/// A series that is being written, and what is to be said of it.
struct DownloadSeries {
    FrameSelection selection; // all that was asked for
    Sidecar sidecar;          // with the frames written
    FrameCounter counter;     // of them

    std::uint32_t written() const { return static_cast<std::uint32_t>(sidecar.frames.size()); }
    bool isWhole() const { return written() == selection.count; }
    FrameSelection rest() const
    {
        return {.first = selection.first + written() * selection.every,
                .count = selection.count - written(),
                .every = selection.every};
    }
    /// Drops the frames behind so many.
    void cut(std::size_t count);
    void add(const ListedFrame& frame)
    {
        sidecar.frames.push_back(frame);
        counter.add(frame.header.counter);
    }
};

/// The frames that an interrupted download has written are not read again. Throws Failure if that
/// was not the download that is now asked for.
void continueSeries(DownloadSeries& series, const Sidecar& earlier, const CameraSession& camera,
                    const RecordingInfo& info);

} // namespace telvo

#endif
