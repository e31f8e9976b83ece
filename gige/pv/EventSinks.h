#ifndef TELVO_GIGE_PV_EVENTSINKS_H
#define TELVO_GIGE_PV_EVENTSINKS_H

#include "PvDeviceEventSink.h"
#include "PvResult.h"

#include <mutex>
#include <vector>

/**
 * The receivers of one device's notifications.
 * Threads: any. A notification holds the lock, so that remove() waits for it; on the notifying
 * thread itself the lock is entered again.
 */
class EventSinks
{
  public:
    /// @return INVALID_PARAMETER for null, STATE_ERROR if it is there already
    PvResult add(PvDeviceEventSink* sink);
    /// @return NOT_FOUND
    PvResult remove(PvDeviceEventSink* sink);
    void notifyLinkDisconnected(PvDevice* device);

  private:
    bool contains(const PvDeviceEventSink* sink) const;

    std::recursive_mutex mLock;
    std::vector<PvDeviceEventSink*> mSinks;
};

#endif
