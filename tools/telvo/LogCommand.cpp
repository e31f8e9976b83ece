#include "CancelFlag.h"
#include "Commands.h"
#include "DebugListener.h"
#include "Terminal.h"
#include "Windows1252.h"

#include <chrono>
#include <ctime>
#include <iomanip>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

namespace telvo
{

namespace
{

constexpr std::chrono::milliseconds kEndPoll{100};
constexpr std::chrono::milliseconds kNoWait{0};
constexpr int kMostAtTheEnd = 1000; // lines
constexpr int kProcessIdWidth = 7;  // characters

void showRaw(const DebugLine& line)
{
    if (line.source == LineSource::Library) {
        std::cout << line.text << std::flush;
    }
}

/// "13:05:09.123  ", of the day where the tool runs.
std::string timeNow()
{
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    const auto part = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch());
    std::ostringstream text;
    // NOLINTNEXTLINE(concurrency-mt-unsafe): one thread prints lines
    text << std::put_time(std::localtime(&seconds), "%H:%M:%S.") << std::setfill('0')
         << std::setw(3) << part.count() % 1000 << "  ";
    return text.str();
}

std::string textOf(const DebugLine& line)
{
    if (line.source == LineSource::Stack) {
        return "gige: " + line.text;
    }
    constexpr std::string_view kLineEnds = "\r\n"; // some texts begin with one
    std::string text = utf8FromWindows1252(line.text);
    text.erase(text.find_last_not_of(kLineEnds) + 1);
    text.erase(0, text.find_first_not_of(kLineEnds));
    return text;
}

void show(const DebugLine& line, bool withTime)
{
    std::cout << (withTime ? timeNow() : "") << std::setw(kProcessIdWidth) << line.processId << "  "
              << textOf(line) << std::endl;
}

struct LogOptions {
    bool raw = false;
    bool noTime = false;
};

void runLog(const LogOptions& options)
{
    const CancelFlag cancel;
    DebugListener listener;
    if (options.raw) {
        makeOutputBinary();
    } else {
        showUtf8();
    }
    const auto showNext = [&](std::chrono::milliseconds wait) {
        const auto line = listener.next(wait);
        if (line) {
            options.raw ? showRaw(*line) : show(*line, !options.noTime);
        }
        return line.has_value();
    };
    while (!cancel.isSet()) {
        showNext(kEndPoll);
    }
    for (int i = 0; i < kMostAtTheEnd && showNext(kNoWait); ++i) { // what has come by then
    }
}

} // namespace

void addLogCommand(const Command& app)
{
    const Command command =
        app.add("log", "Show the debug lines of every process on this machine as they come");
    const auto options = std::make_shared<LogOptions>();
    command.flag("--raw", options->raw,
                 "The library's lines alone, the bytes as sent: Windows-1252, no time, no process "
                 "number");
    command.flag("--no-time", options->noTime, "Leave out the time at which a line came");
    command.footer("Each line comes with its time and the number of the process that wrote it. "
                   "Ctrl-C ends.\nSeveral may look at once; the first one passes the lines on.\n\n"
                   "Lines with 'gige:' in front are those of the GigE Vision stack within that "
                   "process: why\npictures do not come, and what to do.");
    command.onRun([options] { runLog(*options); });
}

} // namespace telvo
