#ifndef TELVO_GIGE_PV_EVENTSINKS_H
#define TELVO_GIGE_PV_EVENTSINKS_H

#include "PvDeviceEventSink.h"
#include "PvResult.h"

#include <memory>
#include <mutex>
#include <vector>

/// The receivers of one device's notifications. A notification shares those that it tells, and
/// holds no lock while it does: a receiver may do and wait for what it wants. Threads: any; mLock
/// guards the list's pointer, the list itself is never changed.
class EventSinks
{
  public:
    /// @return INVALID_PARAMETER for null, STATE_ERROR if it is there already
    PvResult add(std::shared_ptr<PvDeviceEventSink> sink);
    /// @return NOT_FOUND
    PvResult remove(const PvDeviceEventSink* sink);
    /// @param device  handed on; may be gone when a receiver has destroyed it
    void notifyLinkDisconnected(PvDevice* device) const noexcept;

  private:
    using List = std::vector<std::shared_ptr<PvDeviceEventSink>>;

    std::shared_ptr<const List> list() const;

    mutable std::mutex mLock;
    std::shared_ptr<const List> mSinks = std::make_shared<const List>();
};

#endif
