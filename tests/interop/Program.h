#ifndef TELVO_TESTS_INTEROP_PROGRAM_H
#define TELVO_TESTS_INTEROP_PROGRAM_H

#include <string>
#include <sys/types.h>
#include <vector>

/// Runs a program to its end, at most 60 seconds. @return what it printed, both streams
std::string outputOf(const std::vector<std::string>& command);

/// The number after "NAME =" in a program's output; -1 if there is none.
long numberAfter(const std::string& output, const std::string& name);

/// A program that runs beside the test and is ended with the object.
class Program
{
  public:
    explicit Program(const std::vector<std::string>& command);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Asks it to end, and waits for that.
    void end();

  private:
    pid_t mProcess;
};

#endif
