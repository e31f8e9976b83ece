#include "CameraChoice.h"
#include "Commands.h"
#include "EachCamera.h"
#include "Keyboard.h"
#include "RecordRun.h"
#include "SharedStatus.h"
#include "Terminal.h"
#include "ToolError.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <iostream>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace telvo
{

namespace
{

struct RecordCommandOptions {
    CamerasOptions cameras;
    RecordOptions record;
    bool json = false;
};

/// A camera that is ready to record.
struct Armed {
    std::unique_ptr<CameraSession> camera;
    RecordPlan plan;
};

/// The first key, for all recordings.
class SharedKey
{
  public:
    bool isPressed()
    {
        const std::lock_guard guard(mLock);
        mPressed = mPressed || mKeyboard.next().has_value();
        return mPressed;
    }

  private:
    std::mutex mLock; // guards the others
    Keyboard mKeyboard;
    bool mPressed = false;
};

Armed armCamera(const CameraAddress& address, const RecordOptions& options)
{
    auto camera = std::make_unique<CameraSession>(address, options.capture.assignments());
    camera->requireFeatures({"RecordStart", "RecordStop", "AcquisitionStart", "AcquisitionStop",
                             "RecordNumberOfFrames"},
                            "record");
    camera->requireNoRecording();
    const RecordPlan plan = arm(*camera, options);
    return {std::move(camera), plan};
}

/// On a terminal the status line says so, and who has chosen a trigger knows.
void tellOfUnchosenTrigger(const std::vector<Armed>& armed, const RecordOptions& options)
{
    const bool waits = std::ranges::any_of(
        armed, [](const Armed& each) { return each.plan.trigger == TriggerKind::Camera; });
    if (waits && options.trigger.empty() && !isTerminal(stderr)) {
        std::cerr << "telvo: waiting for the trigger, as the camera is set; --trigger none records "
                     "without one\n";
    }
}

std::vector<RecordOutcome> recordAll(const std::vector<Armed>& armed, bool byKey)
{
    SharedStatus status(armed.size());
    std::optional<SharedKey> key;
    if (byKey) {
        key.emplace();
        std::cerr << "telvo: recording; any key is the trigger\n";
    }
    const KeyPressed keyPressed = [&key] { return key && key->isPressed(); };
    return forEach<RecordOutcome>(armed, [&](std::size_t i, const Armed& each) {
        return record(*each.camera, each.plan, keyPressed,
                      [&](const std::string& text) { status.show(i, text); });
    });
}

void print(const std::vector<Armed>& armed, const std::vector<RecordOutcome>& outcomes, bool asJson)
{
    Json json = Json::array();
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
        const std::string& ip = armed[i].camera->address().ip;
        if (asJson) {
            json.push_back(outcomes[i].json());
            json.back()["camera"] = ip;
        } else {
            std::cout << (outcomes.size() > 1 ? ip + ":\n" : "") << outcomes[i].text();
        }
    }
    if (asJson) {
        printJson(json);
    }
}

void runRecord(const RecordCommandOptions& options)
{
    options.record.check();
    options.record.capture.assignments(); // finds wrong ones before a camera is looked for
    const std::vector<CameraAddress> cameras = chooseCameras(options.cameras);
    const auto armed = forEach<Armed>(cameras, [&](std::size_t, const CameraAddress& address) {
        return armCamera(address, options.record);
    });
    tellOfUnchosenTrigger(armed, options.record);
    const auto outcomes = recordAll(armed, options.record.trigger == "key");
    print(armed, outcomes, options.json);
    for (const RecordOutcome& outcome : outcomes) {
        if (!outcome.shortfall.empty()) {
            throw Failure(outcome.shortfall);
        }
    }
}

} // namespace

void addRecordCommand(const Command& app)
{
    const Command command = app.add("record", "Record into a camera's memory");
    const auto options = std::make_shared<RecordCommandOptions>();
    addCamerasOptions(command, options->cameras);
    options->record.addTo(command);
    addJsonOption(command, options->json);
    command.footer(
        "Without a trigger it ends after --frames or --seconds, when the memory is full, or with\n"
        "Ctrl-C; a few more frames than asked for may be recorded. With one it waits for the "
        "trigger\nand ends as the camera ends it; --frames is then the least that is wanted.\n"
        "Exit status 1: less than asked. 'telvo download' reads the recording.");
    command.onRun([options] { runRecord(*options); });
}

} // namespace telvo
