#include "EventSinks.h"

#include <algorithm>
#include <utility>

namespace
{

bool contains(const std::vector<std::shared_ptr<PvDeviceEventSink>>& sinks,
              const PvDeviceEventSink* sink)
{
    return std::ranges::any_of(sinks, [sink](const auto& entry) { return entry.get() == sink; });
}

} // namespace

PvResult EventSinks::add(std::shared_ptr<PvDeviceEventSink> sink)
{
    if (sink == nullptr) {
        return PvResult::Code::InvalidParameter;
    }
    const std::lock_guard lock(mLock);
    if (contains(*mSinks, sink.get())) {
        return PvResult::Code::StateError;
    }
    List longer = *mSinks;
    longer.push_back(std::move(sink));
    mSinks = std::make_shared<const List>(std::move(longer));
    return PvResult::Code::Ok;
}

PvResult EventSinks::remove(const PvDeviceEventSink* sink)
{
    const std::lock_guard lock(mLock);
    List shorter = *mSinks;
    if (std::erase_if(shorter, [sink](const auto& entry) { return entry.get() == sink; }) == 0) {
        return PvResult::Code::NotFound;
    }
    mSinks = std::make_shared<const List>(std::move(shorter));
    return PvResult::Code::Ok;
}

void EventSinks::notifyLinkDisconnected(PvDevice* device) const noexcept
{
    const auto sinks = list();
    for (const auto& sink : *sinks) {
        // A sink told earlier may have removed this one.
        if (contains(*list(), sink.get())) {
            sink->OnLinkDisconnected(device);
        }
    }
}

std::shared_ptr<const EventSinks::List> EventSinks::list() const
{
    const std::lock_guard lock(mLock);
    return mSinks;
}
