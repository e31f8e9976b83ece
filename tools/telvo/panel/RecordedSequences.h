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
    /// @param camera        borrowed until the end, and has the size of its recording until then
    /// @param givenTrigger  the counter of the frame that was shown when the user gave the trigger;
    ///                      none: he has not, as far as is known
    RecordedSequences(const CameraSession& camera, const RecordingInfo& info,
                      std::optional<std::uint16_t> givenTrigger);

    /// Frames of all sequences.
    std::uint32_t frames() const { return mFrames; }

    /// Throws Failure if there is none of the number.
    const Recording& select(std::uint32_t sequence);
    /// Throws Failure, also where the sequence has no such frame.
    GrayImage read(FramePlace place);

    /// What is known of each: its length, rate and trigger. A few of its frames are read for that,
    /// the first time.
    Json json();

    /// "timeFromTrigger", microseconds from the trigger's frame to this one, and whether that is
    /// approximate. Empty: no trigger is known, or times of day. The first time, a few frames are
    /// read for that.
    Json triggerOf(std::uint32_t sequence, const FrameHeader& header);

  private:
    struct Facts {
        std::optional<FrameHeader> first{}; // none: the sequence is empty
        std::optional<FrameHeader> last{};
        std::optional<std::uint32_t> trigger{}; // the first frame after it; may be behind the last
        bool isTriggerApproximate = false;
        std::optional<FrameHeader> triggerHeader{};
    };

    const Facts& factsOf(std::uint32_t sequence);
    void findTriggerOf(std::uint32_t sequence, Facts& facts);
    FrameHeader headerOf(std::uint32_t frame);
    Json rowOf(std::uint32_t sequence);

    const CameraSession& mCamera;
    const RecordingInfo mInfo;
    const std::optional<std::uint16_t> mGivenTrigger;
    std::uint32_t mFrames = 0;
    std::optional<Recording> mSelected;
    std::map<std::uint32_t, Facts> mFacts; // by sequence
};

} // namespace telvo

#endif
