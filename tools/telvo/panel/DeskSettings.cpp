/// A camera's settings at the desk.
#include "CameraDesk.h"

#include "PanelMessages.h"
#include "SettingsFile.h"
#include "ToolError.h"

#include <algorithm>
#include <array>
#include <utility>

namespace telvo
{

namespace
{

/// What changes the size of the pictures that the camera sends.
bool changesPictures(const Assignment& assignment)
{
    constexpr std::array<std::string_view, 6> kNames{"width",    "height",     "offset-x",
                                                     "offset-y", "decimation", "packet-size"};
    return std::ranges::find(kNames, assignment.setting->name) != kNames.end();
}

std::vector<Assignment> assignmentsOf(const SetRequest& request)
{
    std::vector<Assignment> assignments;
    for (const auto& [name, value] : request.values) {
        assignments.push_back(makeAssignment(findSetting(name), value));
    }
    return assignments;
}

} // namespace

MessagePointer CameraDesk::handle(const DeskTask& task, const SettingsRequest& /*request*/)
{
    endReview();
    return answerMessage(task.id, {{"settings", readSettings()}});
}

MessagePointer CameraDesk::handle(const DeskTask& task, const SetRequest& request)
{
    requireSession();
    endReview();
    return write(task, assignmentsOf(request));
}

MessagePointer CameraDesk::handle(const DeskTask& task, const SaveSettingsRequest& /*request*/)
{
    const CameraSession& camera = requireSession();
    endReview();
    const auto read = [&](const Setting& setting) { return camera.read(setting); };
    return answerMessage(task.id, {{"file", settingsDocument(mAddress, read)}});
}

MessagePointer CameraDesk::handle(const DeskTask& task, const LoadSettingsRequest& request)
{
    const CameraSession& camera = requireSession();
    endReview();
    const auto read = [&](const Setting& setting) { return camera.read(setting); };
    const auto filed = filedSettings(Json::parse(request.file), "the file");
    return write(task, assignmentsFor(filed, read));
}

/// Live pictures are interrupted where the camera takes a setting only then.
MessagePointer CameraDesk::write(const DeskTask& task, const std::vector<Assignment>& assignments)
{
    const bool changesSize = std::ranges::any_of(assignments, changesPictures);
    if (changesSize && mMode->busy() != nullptr) {
        throw Failure(mMode->busy());
    }
    std::vector<SettingOutcome> outcomes;
    const auto writeAll = [&] { outcomes = requireSession().write(assignments); };
    if (changesSize) {
        withoutLive(writeAll);
    } else {
        writeAll();
        if (mMode->isLive() && std::ranges::any_of(outcomes, &SettingOutcome::refused)) {
            withoutLive(writeAll);
        }
    }
    requireSession().requireLink();
    for (const Assignment& assignment : assignments) {
        mSettings.forget(*assignment.setting);
    }
    tellSettings();
    return answerMessage(task.id, {{"outcomes", outcomesJson(outcomes)}});
}

Json CameraDesk::readSettings()
{
    Json rows = mSettings.read(requireSession());
    const std::lock_guard guard(mStateLock);
    mNewestSettings = rows;
    return rows;
}

void CameraDesk::tellSettings()
{
    mClients.sendAll(
        eventMessage("settings", {{"camera", mAddress.mac}, {"settings", readSettings()}}));
}

} // namespace telvo
