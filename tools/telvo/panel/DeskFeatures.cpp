/// All of a camera's features at the desk. The library holds the camera for itself alone, so that
/// it is let go for a moment.
#include "CameraDesk.h"

#include "CameraFeatures.h"
#include "PanelMessages.h"
#include "PlainModes.h"
#include "ToolError.h"

namespace telvo
{

MessagePointer CameraDesk::handle(const DeskTask& task, const FeaturesRequest& /*request*/)
{
    Json tree;
    withoutLibrary([&] { tree = CameraFeatures(mAddress, CameraFeatures::Access::Look).tree(); });
    return answerMessage(task.id, {{"tree", tree}});
}

MessagePointer CameraDesk::handle(const DeskTask& task, const SetFeatureRequest& request)
{
    Json feature;
    withoutLibrary([&] {
        feature = CameraFeatures(mAddress, CameraFeatures::Access::Change)
                      .set(request.name, request.value);
    });
    if (mSession) {
        tellSettings();
    }
    return answerMessage(task.id, {{"feature", feature}});
}

/// The camera is then connected again, and live again, whatever the work has come to.
void CameraDesk::withoutLibrary(const std::function<void()>& work)
{
    const bool wasOpen = mSession != nullptr;
    const bool wasLive = mMode->isLive();
    if (!wasOpen) {
        return work();
    }
    requireRest();
    enter(std::make_unique<ConnectingMode>());
    mSession.reset();
    std::string failure;
    try {
        work();
    } catch (const std::exception& error) {
        failure = error.what();
    }
    connectAgain(wasLive);
    if (!failure.empty()) {
        throw Failure(failure);
    }
}

} // namespace telvo
