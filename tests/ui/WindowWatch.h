#ifndef TELVO_TESTS_UI_WINDOWWATCH_H
#define TELVO_TESTS_UI_WINDOWWATCH_H

#include <stop_token>
#include <thread>

/// Writes what the dialog of this process shows to the standard output, each time it changes, so
/// that a script that presses keys can see what comes of them:
///
///     window at 100,80,500,300: Choose a camera              (left, top, right, bottom)
///     row 150,120 02:54:45:00:00:0b | 127.0.0.11 | ... | free *    (its middle; * selected)
///     control 1 at 300,270,388,293 enabled focus: OK
///
/// Runs on a thread of its own.
class WindowWatch
{
  public:
    WindowWatch();

  private:
    static void watch(const std::stop_token& stop);

    std::jthread mThread;
};

#endif
