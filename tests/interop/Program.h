#ifndef TELVO_TESTS_INTEROP_PROGRAM_H
#define TELVO_TESTS_INTEROP_PROGRAM_H

#include <string>
#include <sys/types.h>
#include <vector>

/// A program that runs beside this one and is ended with the object, or with this process.
class Program
{
  public:
    /// @param output  the file that takes what it prints, on both streams; empty: it prints where
    /// we do
    explicit Program(const std::vector<std::string>& command, const std::string& output = {});
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    pid_t id() const { return mProcess; }
    /// Waits for its own end.
    void wait();
    /// Asks it to end, and waits for that.
    void end();

  private:
    pid_t mProcess;
};

#endif
