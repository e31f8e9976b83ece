/// How a command ends early: one line for the user and an exit status.
#ifndef TELVO_TOOLS_TELVO_TOOLERROR_H
#define TELVO_TOOLS_TELVO_TOOLERROR_H

#include "Failure.h" // exit status 1

#include <stdexcept>

namespace telvo
{

constexpr int kExitSuccess = 0;
constexpr int kExitFailure = 1; // the command was right, the work failed
constexpr int kExitUsage = 2;   // the command line was wrong

/// The user ended the command before it was done. Exit status 1.
struct Cancelled : Failure {
    Cancelled() : Failure("ended before it was done") {}
};

/// The command line asks for something that does not exist. Exit status 2.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The command ends with this exit status; the reason was told already.
struct ExitStatus : std::runtime_error {
    explicit ExitStatus(int exitStatus) : std::runtime_error("told already"), value(exitStatus) {}
    int value;
};

} // namespace telvo

#endif
