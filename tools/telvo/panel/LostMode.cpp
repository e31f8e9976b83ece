#include "LostMode.h"

#include "ToolError.h"

namespace telvo
{

namespace
{

constexpr std::chrono::milliseconds kAnswerInterval{50}; // for an answer
constexpr std::chrono::seconds kSearchInterval{1};

} // namespace

DeskMode::Step LostMode::step()
{
    if (mWays.hasAnswered()) {
        try {
            return {.next = mWays.connect()};
        } catch (const Failure& failure) {
            mReason = failure.what();
        }
    }
    if (const auto now = Clock::now(); now >= mNextSearch) {
        mNextSearch = now + kSearchInterval;
        mWays.search();
    }
    return {.wait = kAnswerInterval};
}

Json LostMode::state() const
{
    const std::string tried = mReason.empty() ? "" : " (" + mReason + ")";
    return {{"state", "lost"},
            {"text", "the link to the camera is lost; trying to connect again" + tried}};
}

} // namespace telvo
