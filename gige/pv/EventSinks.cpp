#include "EventSinks.h"

#include <algorithm>

PvResult EventSinks::add(PvDeviceEventSink* sink)
{
    if (sink == nullptr) {
        return PvResult::Code::InvalidParameter;
    }
    const std::lock_guard lock(mLock);
    if (contains(sink)) {
        return PvResult::Code::StateError;
    }
    mSinks.push_back(sink);
    return PvResult::Code::Ok;
}

PvResult EventSinks::remove(PvDeviceEventSink* sink)
{
    const std::lock_guard lock(mLock);
    return std::erase(mSinks, sink) == 0 ? PvResult::Code::NotFound : PvResult::Code::Ok;
}

void EventSinks::notifyLinkDisconnected(PvDevice* device)
{
    const std::lock_guard lock(mLock);
    const std::vector<PvDeviceEventSink*> sinks = mSinks;
    for (PvDeviceEventSink* sink : sinks) {
        // A sink told earlier may have removed this one.
        if (contains(sink)) {
            sink->OnLinkDisconnected(device);
        }
    }
}

bool EventSinks::contains(const PvDeviceEventSink* sink) const
{
    return std::find(mSinks.begin(), mSinks.end(), sink) != mSinks.end();
}
