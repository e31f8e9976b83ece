#include "CallsFromC.h"

#include "TelvoDll.h"

#include <stddef.h>

int32_t readWidthFromC(const char* macAddress, const char* ipAddress, int32_t cameraId)
{
    TelvoConnectionSettings settings = {0};
    uint32_t width = 0;
    if (expConnectGrabber(macAddress, ipAddress, 1, &settings, cameraId) != 0) {
        return -1;
    }
    if (expInitializeGrabber(&settings, cameraId) != 0 || expGetWidth(&width, cameraId) != 0) {
        width = UINT32_MAX;
    }
    expDisconnectGrabber(cameraId);
    return (int32_t)width;
}

uint32_t offsetOfOutputDataRateInC(void)
{
    return (uint32_t)offsetof(TelvoConnectionSettings, outputDataRate);
}

uint16_t frameCounterInC(const uint8_t* frame)
{
    return telvoFrameHeader(frame).counter;
}
