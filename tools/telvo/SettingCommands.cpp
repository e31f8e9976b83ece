#include "CameraChoice.h"
#include "CameraSession.h"
#include "Commands.h"
#include "Json.h"
#include "SettingReader.h"
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

struct GetSetOptions {
    CameraOptions camera;
    std::vector<std::string> arguments;
    bool json = false;
    bool strict = false;
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

void requireEach(const std::vector<const Setting*>& settings, const ReadSetting& read)
{
    for (const Setting* const setting : settings) {
        if (!read(*setting)) {
            throw Failure("the camera has no " + std::string(setting->name) +
                          "; 'telvo get' lists what it has");
        }
    }
}

void runGet(const GetSetOptions& options)
{
    const std::vector<const Setting*> settings = namedSettings(options.arguments);
    const ReadSetting read = settingReader(chooseCamera(options.camera));
    requireEach(settings, read);
    if (options.json) {
        printJson(settingsJson(settings.empty() ? everySetting() : settings, read));
    } else if (settings.empty()) {
        std::cout << formatTable(settingRows(read));
    }
    for (const Setting* const setting : options.json ? std::vector<const Setting*>() : settings) {
        std::cout << setting->name << '=' << read(*setting)->withUnit() << '\n';
    }
}

/// Why the setting will not be so for ever; empty if it will.
std::string remark(const Setting& setting)
{
    switch (setting.lasting) {
    case Lasting::Connection:
        return "for this connection only";
    case Lasting::NextConnection:
        return "until the next command connects the camera; give it to record with --set";
    case Lasting::Always:
        break;
    }
    return "";
}

void printOutcome(const SettingOutcome& outcome)
{
    const std::string lasts = remark(*outcome.asked.setting);
    std::cout << outcome.asked.setting->name << '=' << outcome.text()
              << (lasts.empty() ? "" : " (" + lasts + ')') << '\n';
}

Json outcomeJson(const SettingOutcome& outcome)
{
    Json json = jsonOf(outcome.taken.value_or(SettingText{.value = outcome.asked.text}));
    json["asked"] = jsonValue(outcome.asked.text);
    json["asAsked"] = outcome.isAsAsked();
    if (const std::string lasts = remark(*outcome.asked.setting); !lasts.empty()) {
        json["lasts"] = lasts;
    }
    return json;
}

void print(const std::vector<SettingOutcome>& outcomes, bool asJson)
{
    Json json = Json::object();
    for (const SettingOutcome& outcome : outcomes) {
        if (asJson) {
            json[std::string(outcome.asked.setting->name)] = outcomeJson(outcome);
        } else if (!outcome.refused) {
            printOutcome(outcome);
        }
    }
    if (asJson) {
        printJson(json);
    }
}

void runSet(const GetSetOptions& options)
{
    std::vector<Assignment> assignments;
    for (const std::string& argument : options.arguments) {
        assignments.push_back(parseAssignment(argument));
    }
    const CameraSession camera(chooseCamera(options.camera));
    const std::vector<SettingOutcome> outcomes = camera.write(assignments);
    print(outcomes, options.json);
    camera.requireLink();
    requireTaken(outcomes);
    if (options.strict) {
        requireAsAsked(outcomes);
    }
}

} // namespace

void addGetCommand(const Command& app)
{
    const Command command = app.add("get", "Print a camera's settings");
    const auto options = std::make_shared<GetSetOptions>();
    addCameraOptions(command, options->camera);
    command.option("names", options->arguments, "Settings to print; none: all, with limits");
    addJsonOption(command, options->json);
    command.footer("It changes nothing in the camera.\n\nSettings:\n" + describeSettings());
    command.onRun([options] { runGet(*options); });
}

void addSetCommand(const Command& app)
{
    const Command command = app.add("set", "Change a camera's settings and print what it took");
    const auto options = std::make_shared<GetSetOptions>();
    addCameraOptions(command, options->camera);
    command
        .option("settings", options->arguments,
                "NAME=VALUE, written in an order in which the camera takes them")
        .required();
    command.flag("--strict", options->strict,
                 "Fail where the camera takes another value than asked");
    addJsonOption(command, options->json);
    command.footer("Settings:\n" + describeSettings() +
                   "\nThe settings from data-rate on belong to a connection and are lost when it "
                   "ends;\ngive them to live, record or download with --set.");
    command.onRun([options] { runSet(*options); });
}

} // namespace telvo
