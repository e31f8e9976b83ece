#include "CancelFlag.h"
#include "Commands.h"
#include "DebugListener.h"
#include "Terminal.h"
#include "Windows1252.h"

#include <chrono>
#include <iomanip>
#include <iostream>
#include <memory>
#include <string_view>

namespace telvo
{

namespace
{

constexpr std::chrono::milliseconds kCancelPoll{100};
constexpr int kProcessIdWidth = 7; // characters

void showRaw(const DebugLine& line)
{
    std::cout << line.text << std::flush;
}

void show(const DebugLine& line)
{
    constexpr std::string_view kLineEnds = "\r\n"; // some texts begin with one
    std::string text = utf8FromWindows1252(line.text);
    text.erase(text.find_last_not_of(kLineEnds) + 1);
    text.erase(0, text.find_first_not_of(kLineEnds));
    std::cout << std::setw(kProcessIdWidth) << line.processId << "  " << text << std::endl;
}

void runLog(bool raw)
{
    const CancelFlag cancel;
    DebugListener listener;
    if (raw) {
        makeOutputBinary();
    } else {
        showUtf8();
    }
    while (!cancel.isSet()) {
        if (const auto line = listener.next(kCancelPoll)) {
            raw ? showRaw(*line) : show(*line);
        }
    }
}

} // namespace

void addLogCommand(const Command& app)
{
    const Command command =
        app.add("log", "Show the debug lines of every process on this machine as they come");
    const auto raw = std::make_shared<bool>(false);
    command.flag("--raw", *raw, "Leave the bytes as sent: Windows-1252, no process number");
    command.footer("Each line comes with the number of the process that wrote it. Ctrl-C ends.");
    command.onRun([raw] { runLog(*raw); });
}

} // namespace telvo
