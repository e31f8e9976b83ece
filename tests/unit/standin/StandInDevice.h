#ifndef TELVO_TESTS_STANDIN_STANDINDEVICE_H
#define TELVO_TESTS_STANDIN_STANDINDEVICE_H

#include "PvDevice.h"

#include <atomic>
#include <string>

/// What the stand-in keeps of a device; loseLink() reaches in here.
class PvDevice::Impl
{
  public:
    std::string label;
    std::atomic<bool> connected{false};
    std::atomic<PvDeviceEventSink*> sink{nullptr};
};

#endif
