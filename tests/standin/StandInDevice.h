#ifndef TELVO_TESTS_STANDIN_STANDINDEVICE_H
#define TELVO_TESTS_STANDIN_STANDINDEVICE_H

#include "PvDevice.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

/// The sink that a device tells of a lost link. Threads: any.
class SharedSink
{
  public:
    void set(std::shared_ptr<PvDeviceEventSink> sink)
    {
        const std::lock_guard lock(mLock);
        mSink.swap(sink);
    }
    std::shared_ptr<PvDeviceEventSink> get() const
    {
        const std::lock_guard lock(mLock);
        return mSink;
    }

  private:
    mutable std::mutex mLock;
    std::shared_ptr<PvDeviceEventSink> mSink;
};

/// What the stand-in keeps of a device; loseLink() reaches in here.
class PvDevice::Impl
{
  public:
    std::string label;
    std::atomic<bool> connected{false};
    SharedSink sink;
};

#endif
