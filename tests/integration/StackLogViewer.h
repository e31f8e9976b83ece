#ifndef TELVO_TESTS_INTEGRATION_STACKLOGVIEWER_H
#define TELVO_TESTS_INTEGRATION_STACKLOGVIEWER_H

#include "ViewerSocket.h"

#include <chrono>
#include <string>

/// The viewer of the stack's lines in the test's own network.
class StackLogViewer
{
  public:
    /// The next line that has this in it; others are dropped. Empty: none came.
    std::string await(const std::string& part) const;
    /// Whether a line with this in it has come; all are dropped.
    bool hasSeen(const std::string& part) const;

  private:
    /// Empty: none within the wait.
    std::string next(std::chrono::milliseconds wait) const;

    ViewerSocket mSocket{"TelvoGigE.log"};
};

#endif
