#ifndef TELVO_TOOLS_TELVO_WRITERS_FAILURE_H
#define TELVO_TOOLS_TELVO_WRITERS_FAILURE_H

#include <stdexcept>

namespace telvo
{

/// The work failed: no camera, link lost, file not writable. The text is one line for the user.
struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace telvo

#endif
