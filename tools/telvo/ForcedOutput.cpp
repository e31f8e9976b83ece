#include "ForcedOutput.h"

#include "ToolError.h"

namespace telvo
{

void requireFree(const std::filesystem::path& path, bool force)
{
    if (!force && kindOf(path) == TargetKind::File) {
        throw Failure(path.string() + " is there already; --force replaces it");
    }
}

} // namespace telvo
