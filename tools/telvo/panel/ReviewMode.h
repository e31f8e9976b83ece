#ifndef TELVO_TOOLS_TELVO_PANEL_REVIEWMODE_H
#define TELVO_TOOLS_TELVO_PANEL_REVIEWMODE_H

#include "BrightnessCurve.h"
#include "CameraSession.h"
#include "Clients.h"
#include "DeskMode.h"
#include "FrameCache.h"
#include "FramesAhead.h"
#include "RecordedSequences.h"
#include "RecordedSize.h"
#include "Recording.h"
#include "Request.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace telvo
{

/// What the camera has recorded is looked at. Meanwhile the camera has the picture size of its
/// recording. While nothing is asked for, what will be is read ahead.
class ReviewMode : public DeskMode
{
  public:
    /// @param camera        borrowed until the end, as are the clients
    /// @param name          the camera's MAC
    /// @param givenTrigger  of the recording, as its mode had it
    /// Throws Failure where there is nothing to look at.
    ReviewMode(const CameraSession& camera, std::string name, Clients& clients,
               std::optional<std::uint16_t> givenTrigger);

    Step step() override;
    Json state() const override;

    /// Whether the camera's settings of the picture's size are not its user's now.
    bool hasOtherSize() const { return mSize.isChanged(); }

    /// All sequences, as they are listed.
    Json sequences();
    /// A frame as it is sent, under this number.
    MessagePointer frame(std::int64_t id, const FrameRequest& request);
    /// What is known of a curve by now; the rest follows as it is read.
    Json curve(const CurveRequest& request);

  private:
    using Clock = std::chrono::steady_clock;

    const GrayImage& read(FramePlace place);
    bool readAhead();
    bool readCurve();
    void tellCurve(std::uint32_t sequence, const BrightnessCurve& curve);
    BrightnessCurve& curveOf(std::uint32_t sequence);

    const CameraSession& mCamera;
    const std::string mName;
    Clients& mClients;
    const RecordingInfo mInfo;
    const RecordedSize mSize;
    const bool mIsColour;
    RecordedSequences mSequences;
    FrameCache mCache;
    FramesAhead mAhead;
    std::map<std::uint32_t, BrightnessCurve> mCurves; // by sequence
    Clock::time_point mNextCurveNews{};
};

} // namespace telvo

#endif
