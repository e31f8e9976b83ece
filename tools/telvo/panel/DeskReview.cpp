/// What the camera has recorded, at the desk.
#include "CameraDesk.h"

#include "IdleMode.h"
#include "PanelMessages.h"
#include "ReviewMode.h"
#include "ToolError.h"

#include "TelvoDll.h"

namespace telvo
{

MessagePointer CameraDesk::handle(const DeskTask& task, const RecordingRequest& /*request*/)
{
    const CameraSession& camera = requireSession();
    std::uint32_t frames = 0;
    expGetNumberOfAllRecordedFrames(&frames, camera.id());
    if (frames == 0 || mMode->busy() != nullptr) {
        camera.requireLink(); // what was known before is all that can be told
    } else if (mMode->isLive()) {
        withoutLive([this] { setSequences(requireReview().sequences()); });
    } else {
        setSequences(requireReview().sequences());
    }
    return answerMessage(task.id, {{"sequences", mSequences}});
}

MessagePointer CameraDesk::handle(const DeskTask& task, const FrameRequest& request)
{
    if (request.keep) {
        requireNoLive();
    }
    return requireReview().frame(task.id, request);
}

MessagePointer CameraDesk::handle(const DeskTask& task, const CurveRequest& request)
{
    requireNoLive();
    Json answer = requireReview().curve(request);
    mNextStep = Clock::now(); // there is something to be read
    return answerMessage(task.id, answer);
}

/// What a page gets by the way, such as small pictures, may be asked for before live pictures are
/// and come after: it does not end them.
void CameraDesk::requireNoLive() const
{
    if (mMode->isLive()) {
        throw Failure("live pictures come; end them first");
    }
}

ReviewMode& CameraDesk::requireReview()
{
    const CameraSession& camera = requireSession();
    mNextStep = Clock::now(); // what comes next is read ahead
    if (auto* const review = dynamic_cast<ReviewMode*>(mMode.get())) {
        return *review;
    }
    requireRest();
    auto review = std::make_unique<ReviewMode>(camera, mAddress.mac, mClients, mGivenTrigger);
    ReviewMode& result = *review;
    enter(std::move(review));
    return result;
}

/// The camera's settings are its user's again.
void CameraDesk::endReview()
{
    const auto* const review = dynamic_cast<const ReviewMode*>(mMode.get());
    if (review != nullptr && review->hasOtherSize()) {
        rest("at rest");
    }
}

} // namespace telvo
