/// The desk's connection to its camera.
#include "CameraDesk.h"

#include "CameraChoice.h"
#include "FlashMode.h"
#include "IdleMode.h"
#include "LostMode.h"
#include "PanelMessages.h"
#include "PlainModes.h"
#include "RecordMode.h"
#include "ToolError.h"

#include <utility>

namespace telvo
{

MessagePointer CameraDesk::handle(const DeskTask& task, const OpenRequest& /*request*/)
{
    if (!mSession) {
        enter(std::make_unique<ConnectingMode>());
        mGivenTrigger.reset(); // somebody else may have recorded since then
        try {
            takeAnswer();
            enter(connect("connected"));
        } catch (const std::exception& error) {
            enter(std::make_unique<ClosedMode>(error.what()));
            throw;
        }
    }
    return answerMessage(task.id);
}

MessagePointer CameraDesk::handle(const DeskTask& task, const CloseRequest& /*request*/)
{
    if (mSession) {
        requireRest();
    }
    letGo();
    return answerMessage(task.id);
}

/// @return the mode that the camera is in
std::unique_ptr<DeskMode> CameraDesk::connect(const char* news)
{
    mSession = std::make_unique<CameraSession>(mAddress);
    mHasFlashCard = hasFlashCard(*mSession);
    if (!mSession->preparation().empty()) {
        mShared.news.tell(mSession->preparation(), PanelNews::Weight::Lasting);
    }
    mSettings.forgetAll();
    setSequences(Json::array());
    setOpen(true);
    mClients.sendAll(eventMessage("recording", {{"camera", mAddress.mac}}));
    if (mSession->isRecording()) {
        return std::make_unique<FoundRecordingMode>(*mSession, mPictures);
    }
    return std::make_unique<IdleMode>(*mSession, news);
}

/// Where it cannot be connected, that is tried again and again.
void CameraDesk::connectAgain(bool live)
{
    try {
        enter(connect("connected again"));
        if (live && mMode->busy() == nullptr) {
            enterLive(*mSession);
        }
    } catch (const Failure&) {
        mMode = std::make_unique<ConnectingMode>(); // nothing uses the session now
        mSession.reset();
        setOpen(false);
        enter(lost());
    }
}

std::unique_ptr<DeskMode> CameraDesk::lost()
{
    mGivenTrigger.reset();
    takeAnswer(); // from before
    return std::make_unique<LostMode>(
        LostMode::Ways{.search = mShared.search,
                       .hasAnswered = [this] { return takeAnswer(); },
                       .connect = [this] { return connect("the link is there again"); }});
}

/// @return false: the camera has answered no search since the last call
bool CameraDesk::takeAnswer()
{
    const std::lock_guard guard(mStateLock);
    if (!mAnswer) {
        return false;
    }
    mAddress = *std::exchange(mAnswer, std::nullopt);
    return true;
}

void CameraDesk::letGo()
{
    enter(std::make_unique<ClosedMode>());
    mSession.reset();
    setOpen(false);
}

const CameraSession& CameraDesk::requireSession() const
{
    if (!mSession) {
        throw Failure("the camera is not connected; open it first");
    }
    return *mSession;
}

} // namespace telvo
