#ifndef TELVO_TESTS_INTEROP_PROGRAMOUTPUT_H
#define TELVO_TESTS_INTEROP_PROGRAMOUTPUT_H

#include <string>
#include <vector>

/// Runs a program to its end, at most 60 seconds. @return what it printed, both streams
std::string outputOf(const std::vector<std::string>& command);

/// The number after "NAME =" in a program's output; -1 if there is none.
long numberAfter(const std::string& output, const std::string& name);

#endif
