#include "CameraChoice.h"
#include "CameraSession.h"
#include "Commands.h"
#include "OutputFile.h"
#include "SettingsFile.h"
#include "ToolError.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <vector>

namespace telvo
{

namespace
{

struct Options {
    CameraOptions camera;
    std::filesystem::path file;
    bool force = false;
    bool strict = false;
};

void runSave(const Options& options)
{
    const CameraAddress camera = chooseCamera(options.camera);
    const Json document = settingsDocument(camera, settingReader(camera));
    const std::string text = document.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
    OutputFile file(options.file, options.force ? IfThere::Replace : IfThere::Refuse);
    file.write({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    file.commit();
    std::cout << document.at("settings").size() << " settings: " << options.file.string() << '\n';
}

void runLoad(const Options& options)
{
    const std::vector<FiledSetting> filed = readSettingsFile(options.file);
    const CameraAddress address = chooseCamera(options.camera);
    const std::vector<Assignment> assignments = assignmentsFor(filed, settingReader(address));
    const CameraSession camera(address);
    camera.requireNoRecording();
    const std::vector<SettingOutcome> outcomes = camera.write(assignments);
    for (const SettingOutcome& outcome : outcomes) {
        if (!outcome.refused && !outcome.isAsAsked()) {
            std::cout << outcome.asked.setting->name << '=' << outcome.text() << '\n';
        }
    }
    camera.requireLink();
    requireTaken(outcomes);
    if (options.strict) {
        requireAsAsked(outcomes);
    }
    const auto asAsked = std::ranges::count_if(outcomes, &SettingOutcome::isAsAsked);
    std::cout << asAsked << " of " << outcomes.size() << " settings are as in the file\n";
}

void addFile(const Command& command, Options& options)
{
    addCameraOptions(command, options.camera);
    command.option("file", options.file, "The file, JSON").required().type("FILE");
}

} // namespace

void addSettingsCommand(const Command& app)
{
    const Command command =
        app.add("settings", "Keep a camera's settings in a file, or take them from one");
    command.needsCommand();
    const auto options = std::make_shared<Options>();

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
