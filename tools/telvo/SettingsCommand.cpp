#include "CameraChoice.h"
#include "CameraSession.h"
#include "Commands.h"
#include "CountText.h"
#include "ForcedOutput.h"
#include "Json.h"
#include "OutputFile.h"
#include "SettingsFile.h"
#include "ToolError.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace telvo
{

namespace
{

struct SettingsOptions {
    CameraOptions camera;
    std::filesystem::path file;
    bool force = false;
    bool strict = false;
    bool json = false;
};

void runSave(const SettingsOptions& options)
{
    requireFree(options.file, options.force);
    const CameraAddress camera = chooseCamera(options.camera);
    const Json document = settingsDocument(camera, settingReader(camera));
    const std::string text = document.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
    OutputFile file(options.file, ifThere(options.force));
    file.write({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    file.commit();
    const std::size_t count = document.at("settings").size();
    if (options.json) {
        printJson({{"camera", camera.ip}, {"settings", count}, {"file", options.file.string()}});
    } else {
        std::cout << countText(count, "setting") << ": " << options.file.string() << '\n';
    }
}

/// Those that the camera takes in another way than the file says.
std::vector<SettingOutcome> othersThanAsked(const std::vector<SettingOutcome>& outcomes)
{
    std::vector<SettingOutcome> others;
    std::ranges::copy_if(outcomes, std::back_inserter(others),
                         [](const SettingOutcome& each) { return !each.isAsAsked(); });
    return others;
}

void print(const std::vector<SettingOutcome>& outcomes)
{
    const std::vector<SettingOutcome> others = othersThanAsked(outcomes);
    for (const SettingOutcome& outcome : others) {
        if (!outcome.refused) {
            std::cout << outcome.asked.setting->name << '=' << outcome.text() << '\n';
        }
    }
    std::cout << outcomes.size() - others.size() << " of " << outcomes.size()
              << " settings are as in the file\n";
}

void printAsJson(const std::vector<SettingOutcome>& outcomes, const std::string& camera)
{
    Json others = Json::object();
    for (const SettingOutcome& outcome : othersThanAsked(outcomes)) {
        others[std::string(outcome.asked.setting->name)] = {
            {"asked", jsonValue(outcome.asked.text)},
            {"value", outcome.taken ? jsonValue(outcome.taken->value) : Json()},
            {"refused", outcome.refused}};
    }
    printJson({{"camera", camera},
               {"settings", outcomes.size()},
               {"asInFile", outcomes.size() - others.size()},
               {"others", others}});
}

void runLoad(const SettingsOptions& options)
{
    const std::vector<FiledSetting> filed = readSettingsFile(options.file);
    const CameraAddress address = chooseCamera(options.camera);
    const std::vector<Assignment> assignments = assignmentsFor(filed, settingReader(address));
    const CameraSession camera(address);
    camera.requireNoRecording();
    const std::vector<SettingOutcome> outcomes = camera.write(assignments);
    if (options.json) {
        printAsJson(outcomes, address.ip);
    } else {
        print(outcomes);
    }
    camera.requireLink();
    requireTaken(outcomes);
    if (options.strict) {
        requireAsAsked(outcomes);
    }
}

void addFile(const Command& command, SettingsOptions& options)
{
    addCameraOptions(command, options.camera);
    command.option("file", options.file, "The file, JSON").required().type("FILE");
    addJsonOption(command, options.json);
}

} // namespace

void addSettingsCommand(const Command& app)
{
    const Command command =
        app.add("settings", "Keep a camera's settings in a file, or take them from one");
    command.needsCommand();
    const auto options = std::make_shared<SettingsOptions>();

    const Command save = command.add("save", "Write all settings to a file");
    addFile(save, *options);
    save.flag("--force", options->force, "Replace the file if it is there");
    save.onRun([options] { runSave(*options); });

    const Command load = command.add("load", "Set the camera as the file says");
    addFile(load, *options);
    load.flag("--strict", options->strict,
              "Fail where the camera takes another value than the file's");
    load.footer("What the file has wrong is told before anything is changed.");
    load.onRun([options] { runLoad(*options); });
}

} // namespace telvo
