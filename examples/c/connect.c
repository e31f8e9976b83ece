/* Connects a camera, tells who it is, and changes a setting. */
#include "common.h"

static void printText(const char* key)
{
    char text[50];
    const uint32_t size = sizeof text;
    if (expGetParam(key, text, &size, CAMERA) == 0) {
        printf("%-14s %s\n", key, text);
    }
}

int main(int count, char** arguments)
{
    uint32_t minimum, maximum, value;
    const int failure = openCamera(count, arguments);
    if (failure != 0) {
        return failure;
    }
    printText("model");
    printText("serialNumber");
    printText("cameraVersion");

    expSetFrameRate(500, CAMERA);
    if (expGetFrameRate(&minimum, &maximum, &value, CAMERA) == 0) {
        printf("frame rate     %u frames/s, of %u to %u\n", value, minimum, maximum);
    }
    return expDisconnectGrabber(CAMERA) == 0 ? 0 : 1;
}
