#ifndef TELVO_SRC_GRABBER_LINKLOSSSINK_H
#define TELVO_SRC_GRABBER_LINKLOSSSINK_H

#include "PvDeviceEventSink.h"

#include <mutex>

class CQuorGrabber;

/**
 * Hears of the loss of a grabber's link and calls the host's changed callback. The callback may
 * take as long as it wants, and the grabber be destroyed meanwhile: nothing but this object, which
 * the notification shares, is used once it is called.
 * Threads: the stack's calls OnLinkDisconnected; mLock guards mGrabber and what is done with it.
 */
class LinkLossSink final : public PvDeviceEventSink
{
  public:
    /// @param grabber  borrowed until it leaves
    explicit LinkLossSink(CQuorGrabber& grabber) : mGrabber(&grabber) {}

    /// From its return on the grabber is not used, and no callback begins. Waits for a notification
    /// that uses the grabber, but not for the host's callback.
    void leave();

    void OnLinkDisconnected(PvDevice* device) override;

  private:
    std::mutex mLock;
    CQuorGrabber* mGrabber; // null: it has left
};

#endif
