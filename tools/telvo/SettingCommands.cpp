#include "CameraChoice.h"
#include "Commands.h"
#include "Setting.h"
#include "TextTable.h"
#include "ToolError.h"

#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace telvo
{

namespace
{

struct Options {
    CameraOptions camera;
    std::vector<std::string> arguments;
};

std::vector<const Setting*> namedSettings(const std::vector<std::string>& names)
{
    std::vector<const Setting*> settings;
    settings.reserve(names.size());
    for (const std::string& name : names) {
        settings.push_back(&findSetting(name));
    }
    return settings;
}

void runGet(const Options& options)
{
    const std::vector<const Setting*> settings = namedSettings(options.arguments);
    const CameraSession camera(chooseCamera(options.camera));
    if (settings.empty()) {
        std::cout << formatTable(settingRows(camera.id()));
    }
    for (const Setting* setting : settings) {
        std::cout << setting->name << '=' << readSetting(*setting, camera.id()).value << '\n';
    }
}

void printTaken(const Assignment& assignment, const CameraSession& camera)
{
    const Setting& setting = *assignment.setting;
    const auto taken = tryReadSetting(setting, camera.id());
    std::cout << setting.name << '=' << (taken ? taken->value : assignment.text)
              << (setting.ofConnection != nullptr ? " (for this connection only)" : "") << '\n';
}

void runSet(const Options& options)
{
    std::vector<Assignment> assignments;
    for (const std::string& argument : options.arguments) {
        assignments.push_back(parseAssignment(argument));
    }
    const CameraSession camera(chooseCamera(options.camera));
    for (const Assignment& assignment : assignments) {
        writeSetting(assignment, camera.id());
        printTaken(assignment, camera);
    }
}

} // namespace

void addGetCommand(CLI::App& app)
{
    CLI::App* const command = app.add_subcommand("get", "Print a camera's settings");
    const auto options = std::make_shared<Options>();
    addCameraOptions(*command, options->camera);
    command->add_option("names", options->arguments, "Settings to print; none: all, with limits");
    command->footer("Settings:\n" + describeSettings());
    command->callback([options] { runGet(*options); });
}

void addSetCommand(CLI::App& app)
{
    CLI::App* const command =
        app.add_subcommand("set", "Change a camera's settings and print what it took");
    const auto options = std::make_shared<Options>();
    addCameraOptions(*command, options->camera);
    command->add_option("settings", options->arguments, "NAME=VALUE, set in this order")
        ->required();
    command->footer("Settings:\n" + describeSettings() +
                    "\nThe settings from data-rate on belong to a connection and are lost when it "
                    "ends;\ngive them to live, record or download with --set.");
    command->callback([options] { runSet(*options); });
}

} // namespace telvo
