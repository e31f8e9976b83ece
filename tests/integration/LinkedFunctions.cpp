#include "HostFunctions.h"

HostFunctions hostFunctions(const char* /*library*/)
{
    return {.connect = expConnectGrabber,
            .initialize = expInitializeGrabber,
            .startLive = expStartLiveMode,
            .disconnect = expDisconnectGrabber};
}
