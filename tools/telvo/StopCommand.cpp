#include "CameraChoice.h"
#include "Commands.h"
#include "CountText.h"
#include "EachCamera.h"
#include "Json.h"
#include "RecordingEnd.h"

#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace telvo
{

namespace
{

struct StopOptions {
    CamerasOptions cameras;
    bool json = false;
};

/// None: it was not recording.
using Stopped = std::optional<RecordedFrames>;

Stopped stop(const CameraAddress& address)
{
    const CameraSession camera(address);
    if (!camera.isRecording()) {
        return std::nullopt;
    }
    endRecording(camera);
    return recordedFrames(camera);
}

std::string textOf(const Stopped& stopped)
{
    return !stopped ? "was not recording"
                    : "recording ended, " + countText(stopped->count, "frame") + " of " +
                          std::to_string(stopped->width) + 'x' + std::to_string(stopped->height) +
                          " in the camera's memory";
}

Json jsonOf(const Verdict<Stopped>& verdict)
{
    if (!verdict.result) {
        return {{"failure", verdict.failure}};
    }
    Json json{{"wasRecording", verdict.result->has_value()}};
    if (const Stopped& stopped = *verdict.result) {
        json.update(
            {{"frames", stopped->count}, {"width", stopped->width}, {"height", stopped->height}});
    }
    return json;
}

void print(const std::vector<CameraAddress>& cameras, const std::vector<Verdict<Stopped>>& verdicts,
           bool asJson)
{
    Json json = Json::array();
    for (std::size_t i = 0; i < cameras.size(); ++i) {
        json.push_back({{"camera", cameras[i].ip}});
        json.back().update(jsonOf(verdicts[i]));
        if (verdicts[i].result && !asJson) {
            std::cout << cameras[i].ip << ": " << textOf(*verdicts[i].result) << '\n';
        }
    }
    if (asJson) {
        printJson(json);
    }
}

void runStop(const StopOptions& options)
{
    const std::vector<CameraAddress> cameras = chooseCameras(options.cameras);
    const auto verdicts = tryEach<Stopped>(
        cameras, [](std::size_t, const CameraAddress& address) { return stop(address); });
    print(cameras, verdicts, options.json);
    requireNone(failuresOf(verdicts), cameras);
}

} // namespace

void addStopCommand(const Command& app)
{
    const Command command = app.add("stop", "End what a camera is doing");
    const auto options = std::make_shared<StopOptions>();
    addCamerasOptions(command, options->cameras);
    addJsonOption(command, options->json);
    command.footer("Ends a recording that another program has left running, and record standby.");
    command.onRun([options] { runStop(*options); });
}

} // namespace telvo
