#ifndef TELVO_TESTS_TOOLS_TELVO_PROCESS_TOOLPROCESS_H
#define TELVO_TESTS_TOOLS_TELVO_PROCESS_TOOLPROCESS_H

#include <chrono>
#include <mutex>
#include <optional>
#include <string>
#include <sys/types.h>
#include <thread>
#include <vector>

/// What a run of the tool gave.
struct ToolOutcome {
    int exitStatus = -1; ///< negative: the signal that ended it
    std::string output{};
    std::string errors{};
};

/// The tool as a process of its own, its output kept. Killed at the end if it still runs.
class ToolProcess
{
  public:
    /// @param input  all that it reads; none: type() gives it
    explicit ToolProcess(std::vector<std::string> arguments,
                         const std::optional<std::string>& input = "");
    /// Any program, its name or path in front.
    struct Program {
        std::vector<std::string> command;
    };
    explicit ToolProcess(const Program& program, const std::optional<std::string>& input = "");
    ~ToolProcess();
    ToolProcess(const ToolProcess&) = delete;
    ToolProcess& operator=(const ToolProcess&) = delete;

    /// More input. Without it the input has ended.
    void type(const std::string& text) const;
    void signal(int number) const;
    /// @return the first line of its output that begins so, as soon as it is whole; empty: none
    /// came
    std::string awaitLine(const std::string& beginning);
    /// @return how it ended; a process that is still there after 30 s is killed
    ToolOutcome wait();
    /// Whether it has ended within this time.
    bool endsWithin(std::chrono::milliseconds time);

  private:
    pid_t mProcess = -1;
    int mInput = -1;
    std::mutex mLock; // guards what the readers write
    std::string mOutput;
    std::string mErrors;
    std::vector<std::jthread> mReaders;
    int mStatus = -1;
    bool mEnded = false;
};

/// Runs the tool to its end.
ToolOutcome runTool(const std::vector<std::string>& arguments, const std::string& input = "");

/// Runs another program to its end.
ToolOutcome runProgram(const std::vector<std::string>& command);

/// The tool with these arguments, as a line for a shell.
std::string toolLine(const std::vector<std::string>& arguments);

#endif
