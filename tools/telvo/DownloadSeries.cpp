#include "DownloadSeries.h"

#include "Json.h"
#include "ToolError.h"

#include <string>
#include <utility>

namespace telvo
{

namespace
{

bool holdsStill(const ListedFrame& frame, const CameraSession& camera, const RecordingInfo& info)
{
    return decodeFrameHeader(readFrame(camera, info, frame.frame)) == frame.header;
}

} // namespace

void DownloadSeries::cut(std::size_t count)
{
    FrameList frames = std::exchange(sidecar.frames, {});
    frames.resize(count);
    counter = FrameCounter(selection.every);
    for (const ListedFrame& frame : frames) {
        add(frame);
    }
}

void continueSeries(DownloadSeries& series, const Sidecar& earlier, const CameraSession& camera,
                    const RecordingInfo& info)
{
    for (const char* member : {"recording", "selection", "pictures"}) {
        if (earlier.about.value(member, Json()) != series.sidecar.about[member]) {
            throw Failure(std::string("the interrupted download differs in its ") + member +
                          "; give the same options, or download anew");
        }
    }
    if (!earlier.frames.empty() && !holdsStill(earlier.frames.back(), camera, info)) {
        throw Failure("the camera's recording is not that of the interrupted download; "
                      "download it to another file");
    }
    for (const ListedFrame& frame : earlier.frames) {
        series.add(frame);
    }
}

} // namespace telvo
