/// --force: whether a file that is there already may be replaced.
#ifndef TELVO_TOOLS_TELVO_FORCEDOUTPUT_H
#define TELVO_TOOLS_TELVO_FORCEDOUTPUT_H

#include "OutputTarget.h"

#include <filesystem>

namespace telvo
{

inline IfThere ifThere(bool force)
{
    return force ? IfThere::Replace : IfThere::Refuse;
}

/// Throws Failure where a file is there already and may not be replaced.
void requireFree(const std::filesystem::path& path, bool force);

} // namespace telvo

#endif
