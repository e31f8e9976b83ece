#ifndef TELVO_PLATFORM_EBUS_PVDEVICEINFO_H
#define TELVO_PLATFORM_EBUS_PVDEVICEINFO_H

#include "PvString.h"

/// A camera that discovery found.
class PvDeviceInfo
{
  public:
    PvDeviceInfo(PvString macAddress, PvString ipAddress)
        : mMacAddress(std::move(macAddress)), mIpAddress(std::move(ipAddress))
    {
    }

    /// "02:54:45:00:00:21"
    PvString GetMACAddress() const { return mMacAddress; }
    /// "192.168.1.20"
    PvString GetIPAddress() const { return mIpAddress; }

  private:
    PvString mMacAddress;
    PvString mIpAddress;
};

#endif
