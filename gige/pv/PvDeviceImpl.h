#ifndef TELVO_GIGE_PV_PVDEVICEIMPL_H
#define TELVO_GIGE_PV_PVDEVICEIMPL_H

#include "DeviceSession.h"
#include "EventSinks.h"
#include "LinkParameters.h"
#include "PvDevice.h"

#include <functional>
#include <memory>
#include <mutex>

/// Threads: any. mConnectLock lets one connect or disconnect run at a time, mLock guards the
/// session's pointer; whoever uses the session holds a share of it.
class PvDevice::Impl
{
  public:
    explicit Impl(PvDevice& owner) : mOwner(owner) {}

    PvResult connect(const gige::control::DeviceAddress& address, PvAccessType access);
    PvResult disconnect();
    /// Of the latest connection, which may have ended; null before the first.
    std::shared_ptr<DeviceSession> session() const;
    EventSinks& sinks() { return *mSinks; }
    LinkParameters& link() { return mLink; }
    /// What a device without a connection has.
    PvGenParameterArray& noFeatures() { return mNoFeatures; }

  private:
    PvDevice& mOwner;
    // Shared with a running notification, which may outlive the device.
    std::shared_ptr<EventSinks> mSinks = std::make_shared<EventSinks>();
    LinkParameters mLink;
    HostParameters mNoFeatures;
    std::mutex mConnectLock;
    mutable std::mutex mLock;
    std::shared_ptr<DeviceSession> mSession;
};

#endif
