#include "DebugListener.h"

#include "DebugChannel.h"
#include "ToolError.h"

namespace telvo
{

DebugListener::DebugListener() : mSource(DebugSource::open())
{
    if (!mSource) {
        mRelayed = RelayedLines::open();
    }
    if (!mSource && !mRelayed) {
        throw Failure("another viewer shows the debug lines already and passes none on; end it");
    }
}

DebugListener::~DebugListener() = default;

std::optional<DebugLine> DebugListener::next(std::chrono::milliseconds wait)
{
    if (mSource) {
        return mSource->next(wait);
    }
    if (auto line = mRelayed->next(wait)) {
        return line;
    }
    mSource = DebugSource::open(); // nothing came: has the first viewer ended?
    return std::nullopt;
}

} // namespace telvo
