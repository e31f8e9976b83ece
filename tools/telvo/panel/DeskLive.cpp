/// Live pictures at the desk.
#include "CameraDesk.h"

#include "IdleMode.h"
#include "LiveMode.h"
#include "PanelMessages.h"
#include "ToolError.h"

namespace telvo
{

MessagePointer CameraDesk::handle(const DeskTask& task, const LiveRequest& request)
{
    const CameraSession& camera = requireSession();
    if (request.on != mMode->isLive()) {
        requireRest();
        if (request.on) {
            rest("about to go live"); // ends a look at what was recorded, too
            enterLive(camera);
        }
    }
    return answerMessage(task.id);
}

/// Where it cannot begin, the camera is at rest.
void CameraDesk::enterLive(const CameraSession& camera)
{
    enter(std::make_unique<LiveMode>(camera, mPictures));
}

/// Ends live pictures. Throws Failure where something runs that is not to be ended by the way.
void CameraDesk::requireRest()
{
    if (const char* const reason = mMode->busy()) {
        throw Failure(reason);
    }
    if (mMode->isLive()) {
        rest("live pictures ended");
    }
}

/// Does it while no pictures come, and lets them go on.
void CameraDesk::withoutLive(const std::function<void()>& work)
{
    const bool wasLive = mMode->isLive();
    requireRest();
    work();
    if (wasLive) {
        rest("going on live");
        enterLive(requireSession());
    }
}

void CameraDesk::rest(const std::string& news)
{
    enter(std::make_unique<IdleMode>(requireSession(), news));
}

} // namespace telvo
