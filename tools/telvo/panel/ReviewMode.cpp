#include "ReviewMode.h"

#include "CameraDownload.h"
#include "CountText.h"
#include "PanelMessages.h"
#include "PictureDescription.h"
#include "PictureStyle.h"

#include <utility>

namespace telvo
{

namespace
{

constexpr std::size_t kCacheBytes = std::size_t{128} << 20U; // a hundred large frames
constexpr std::chrono::milliseconds kRestInterval{1000};
constexpr std::chrono::milliseconds kCurveNewsInterval{250};

} // namespace

ReviewMode::ReviewMode(const CameraSession& camera, std::string name, Clients& clients,
                       std::optional<std::uint16_t> givenTrigger)
    : mCamera(camera),
      mName(std::move(name)),
      mClients(clients),
      mInfo(readRecordingInfo(camera)),
      mSize(camera, mInfo),
      mIsColour(hasColours(camera)),
      mSequences(camera, mInfo, givenTrigger),
      mCache(kCacheBytes)
{
}

DeskMode::Step ReviewMode::step()
{
    mCamera.requireLink();
    const bool hasRead = readAhead() || readCurve();
    return {.wait = hasRead ? std::chrono::milliseconds(0) : kRestInterval};
}

Json ReviewMode::state() const
{
    return {{"state", "idle"},
            {"text", countText(mSequences.frames(), "frame") + " in the camera's memory"},
            {"frames", mSequences.frames()},
            {"width", mInfo.width},
            {"height", mInfo.height}};
}

Json ReviewMode::sequences()
{
    return mSequences.json();
}

MessagePointer ReviewMode::frame(std::int64_t id, const FrameRequest& request)
{
    const FramePlace place{request.sequence, request.frame};
    const std::uint32_t frames = mSequences.select(place.sequence).frames;
    const GrayImage& raw = read(place);
    if (!request.keep) {
        mAhead.wanted(place, frames);
    }
    const FrameHeader header = decodeFrameHeader(raw.pixels);
    GrayImage picture(raw.view());
    hideHeader(picture);
    const PictureFigures figures = measure(picture.view());
    curveOf(place.sequence).add(place.frame, figures.mean);
    const PreviewPicture preview = renderPreview(picture.view(), mIsColour, request.wish);

    Json about{{"camera", mName},
               {"kind", "frame"},
               {"id", id},
               {"number", place.frame},
               {"sequence", place.sequence}};
    about.update(describeHeader(header));
    about.update(mSequences.triggerOf(place.sequence, header));
    about.update(describePicture(picture.view(), figures, preview));
    return pictureMessage(about, preview.bytes);
}

Json ReviewMode::curve(const CurveRequest& request)
{
    mSequences.select(request.sequence); // or there is none
    BrightnessCurve& curve = curveOf(request.sequence);
    curve.want(request.points);
    return curve.json();
}

const GrayImage& ReviewMode::read(FramePlace place)
{
    if (const GrayImage* const there = mCache.find(place)) {
        return *there;
    }
    return mCache.put(place, mSequences.read(place));
}

/// @return false: there is nothing to be read
bool ReviewMode::readAhead()
{
    const auto place = mAhead.next(mCache);
    if (place) {
        read(*place);
    }
    return place.has_value();
}

bool ReviewMode::readCurve()
{
    for (auto& [sequence, curve] : mCurves) {
        if (const auto frame = curve.next()) {
            // Not through the cache, which is for what is looked at.
            GrayImage picture = mSequences.read({sequence, *frame});
            hideHeader(picture);
            curve.add(*frame, meanOf(picture.view()));
            tellCurve(sequence, curve);
            return true;
        }
    }
    return false;
}

void ReviewMode::tellCurve(std::uint32_t sequence, const BrightnessCurve& curve)
{
    const Clock::time_point now = Clock::now();
    if (now < mNextCurveNews && !curve.isWhole()) {
        return;
    }
    mNextCurveNews = now + kCurveNewsInterval;
    Json event{{"camera", mName}, {"sequence", sequence}};
    event.update(curve.json());
    mClients.sendAll(eventMessage("curve", event));
}

BrightnessCurve& ReviewMode::curveOf(std::uint32_t sequence)
{
    return mCurves.try_emplace(sequence, mSequences.select(sequence).frames).first->second;
}

} // namespace telvo
