#ifndef TELVO_TESTS_INTEGRATION_HOSTFUNCTIONS_H
#define TELVO_TESTS_INTEGRATION_HOSTFUNCTIONS_H

#include "TelvoDll.h"

/// The functions that a small host uses, wherever its library came from; null: not found.
struct HostFunctions {
    decltype(&expConnectGrabber) connect = nullptr;
    decltype(&expInitializeGrabber) initialize = nullptr;
    decltype(&expStartLiveMode) startLive = nullptr;
    decltype(&expDisconnectGrabber) disconnect = nullptr;

    bool areAllThere() const
    {
        return connect != nullptr && initialize != nullptr && startLive != nullptr &&
               disconnect != nullptr;
    }
};

/// @param library  file to load; a program that is linked to the library leaves it alone
HostFunctions hostFunctions(const char* library);

#endif
