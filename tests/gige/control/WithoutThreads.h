#ifndef TELVO_TESTS_GIGE_CONTROL_WITHOUTTHREADS_H
#define TELVO_TESTS_GIGE_CONTROL_WITHOUTTHREADS_H

#include <array>
#include <cstdint>
#include <functional>
#include <sys/types.h>

/// Checks something in a process that can start no thread; one of its own, since nobody gets back
/// what a limit took. Made before this process starts threads, which a fork would lose.
class ChildWithoutThreads
{
  public:
    enum class Outcome : std::uint8_t { Holds, HoldsNot, HadThreads, Died };

    explicit ChildWithoutThreads(const std::function<bool()>& check);
    ~ChildWithoutThreads();
    ChildWithoutThreads(const ChildWithoutThreads&) = delete;
    ChildWithoutThreads& operator=(const ChildWithoutThreads&) = delete;

    /// Lets the check run, and waits for it.
    Outcome run();

  private:
    std::array<int, 2> mStart{}; // a pipe: what is read, what is written
    pid_t mChild = 0;
};

#endif
