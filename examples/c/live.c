/* Takes live images, and tells how bright each one is. */
#include "common.h"

enum { IMAGES = 10, PATIENCE = 5000 /* ms without an image */ };

static double meanBrightness(const uint8_t* image, uint32_t size)
{
    uint64_t sum = 0;
    uint32_t i;
    for (i = TELVO_FRAME_HEADER_SIZE; i < size; ++i) { /* what comes before are no pixels */
        sum += image[i];
    }
    return (double)sum / (size - TELVO_FRAME_HEADER_SIZE);
}

int main(int count, char** arguments)
{
    uint32_t width = 0, height = 0;
    int taken = 0, waited = 0;
    const int failure = openCamera(count, arguments);
    if (failure != 0) {
        return failure;
    }
    expGetWidth(&width, CAMERA);
    expGetHeight(&height, CAMERA);
    if (expStartLiveMode(CAMERA) != 0) {
        fprintf(stderr, "live mode does not start\n");
        expDisconnectGrabber(CAMERA);
        return 1;
    }
    while (taken < IMAGES && waited < PATIENCE) {
        uint8_t status, last;
        const uint8_t* image = expGetPreviewImage(&status, &last, CAMERA);
        if (image == NULL) { /* none since the last one */
            waitMilliseconds(1);
            ++waited;
            continue;
        }
        waited = 0;
        ++taken;
        printf("image %5u: mean brightness %.1f\n", (unsigned)telvoFrameHeader(image).counter,
               meanBrightness(image, width * height));
    }
    expStopLiveMode(CAMERA);
    expDisconnectGrabber(CAMERA);
    return taken == IMAGES ? 0 : 1;
}
