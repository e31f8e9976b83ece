#ifndef TELVO_TOOLS_TELVO_TOOL_H
#define TELVO_TOOLS_TELVO_TOOL_H

#include <string>

namespace telvo
{

/**
 * The whole tool. Results go to standard output; an error is one line on standard error.
 * @return exit status: 0 done, 1 failed, 2 the command line is wrong
 */
int runTool(int argc, const char* const* argv);

/// One command of a shell, with its arguments, quoted as in other shells. Reports and returns as
/// runTool() does.
int runToolLine(const std::string& line);

} // namespace telvo

#endif
