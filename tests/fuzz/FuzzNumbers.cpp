/// The numbers of both command lines. An input that begins with "telvo" is a command line of the
/// tool, a word a line; of any other, every line is tried as a setting of the tool and as each kind
/// of fault of the virtual camera.
#include "Commands.h"
#include "FaultText.h"
#include "Setting.h"
#include "ToolError.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using Words = std::vector<std::string>;

constexpr std::size_t kWords = 12; // of a command line, so that each input ends quickly

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

Words linesOf(const std::uint8_t* data, std::size_t size)
{
    std::istringstream text(std::string(data, data + size));
    Words lines;
    for (std::string line; lines.size() < kWords && std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}

void trySetting(const std::string& text)
{
    try {
        const telvo::Assignment assignment = telvo::parseAssignment(text);
        require(std::isfinite(assignment.value));
        if (!std::holds_alternative<telvo::RealRangeAccess>(assignment.setting->access)) {
            require(assignment.value == std::floor(assignment.value) && assignment.value >= 0 &&
                    assignment.value <= std::numeric_limits<std::uint32_t>::max());
        }
    } catch (const telvo::UsageError&) { // NOLINT(bugprone-empty-catch): as it should be
    }
}

template <typename Parse>
void tryFault(Parse parse, const std::string& text)
{
    try {
        (void)parse(text);
    } catch (const std::invalid_argument&) { // NOLINT(bugprone-empty-catch): as it should be
    }
}

/// The options of the commands. No command line has as many as each is told to need here, so that
/// after all have been read no command runs.
CLI::App& tool()
{
    static CLI::App app;
    const auto commands = [] { return app.get_subcommands([](CLI::App*) { return true; }); };
    if (commands().empty()) {
        for (const auto add : {telvo::addDiscoverCommand, telvo::addLiveCommand,
                               telvo::addRecordCommand, telvo::addDownloadCommand}) {
            add(telvo::Command(app));
        }
        for (CLI::App* const command : commands()) {
            command->require_option(1000);
        }
    }
    return app;
}

void tryTool(const Words& words)
{
    try {
        tool().parse(Words(words.rbegin(), words.rend() - 1)); // it takes them from the end
    } catch (const CLI::Error&) { // NOLINT(bugprone-empty-catch): as it should be
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Words lines = linesOf(data, size);
    if (!lines.empty() && lines.front() == "telvo") {
        tryTool(lines);
    } else {
        for (const std::string& line : lines) {
            trySetting(line);
            tryFault(camera::parsePacketFault, line);
            tryFault(camera::parseFrameFault, line);
            tryFault(camera::parseAccessFault, line);
            tryFault(camera::parseNumber, line);
        }
    }
    return 0;
}
