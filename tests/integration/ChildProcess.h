#ifndef TELVO_TESTS_INTEGRATION_CHILDPROCESS_H
#define TELVO_TESTS_INTEGRATION_CHILDPROCESS_H

#include <string>
#include <vector>

struct ChildResult {
    int status = -1; ///< exit status; negative: the signal that ended it
    std::string output{};
};

/// Runs a program to its end, with nothing to read and the errors on the test's own.
ChildResult runChild(const std::vector<std::string>& command);

#endif
