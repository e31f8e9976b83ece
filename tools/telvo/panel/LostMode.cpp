#include "LostMode.h"

#include "ToolError.h"

namespace telvo
{

namespace
{

constexpr std::chrono::seconds kRetryInterval{1};

} // namespace

DeskMode::Step LostMode::step()
{
    try {
        return {.next = mConnect()};
    } catch (const Failure& failure) {
        mReason = failure.what();
        return {.wait = kRetryInterval};
    }
}

Json LostMode::state() const
{
    const std::string tried = mReason.empty() ? "" : " (" + mReason + ")";
    return {{"state", "lost"},
            {"text", "the link to the camera is lost; trying to connect again" + tried}};
}

} // namespace telvo
