#ifndef TELVO_TOOLS_TELVO_PANEL_RECORDEDSEQUENCES_H
#define TELVO_TOOLS_TELVO_PANEL_RECORDEDSEQUENCES_H

#include "CameraSession.h"
#include "FrameCache.h"
#include "FrameHeader.h"
#include "GrayImage.h"
#include "Json.h"
#include "Recording.h"

#include <cstdint>
#include <map>
#include <optional>

namespace telvo
{

/// The sequences in a camera's memory and their frames. Of the camera's thread.
class RecordedSequences
{
  public:
    /// The camera is borrowed until the end, and has the size of its recording until then.
    RecordedSequences(const CameraSession& camera, const RecordingInfo& info);

    /// Frames of all sequences.
    std::uint32_t frames() const { return mFrames; }

    /// Throws Failure if there is none of the number.
    const Recording& select(std::uint32_t sequence);
    /// Throws Failure, also where the sequence has no such frame.
    GrayImage read(FramePlace place);

    /// What is known of each: its length, rate and trigger. A few of its frames are read for that,
    /// the first time.
    Json json();

    /// Microseconds from the trigger's frame to this one; none: no trigger is known, or times of
    /// day. The first time, a few frames are read for that.
    std::optional<std::int64_t> timeFromTrigger(std::uint32_t sequence, const FrameHeader& header);

  private:
    struct Facts {
        std::optional<FrameHeader> first{}; // none: the sequence is empty
        std::optional<FrameHeader> last{};
        std::optional<std::uint32_t> trigger{}; // the first frame after it
        std::optional<FrameHeader> triggerHeader{};
    };

    const Facts& factsOf(std::uint32_t sequence);
    FrameHeader headerOf(std::uint32_t frame);
    Json rowOf(std::uint32_t sequence);

    const CameraSession& mCamera;
    const RecordingInfo mInfo;
    std::uint32_t mFrames = 0;
    std::optional<Recording> mSelected;
    std::map<std::uint32_t, Facts> mFacts; // by sequence
};

} // namespace telvo

#endif
