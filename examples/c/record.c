/* Records into the camera's memory for a second, and tells what it holds then. */
#include "common.h"

enum { RECORD_TIME = 1000 /* ms */ };

int main(int count, char** arguments)
{
    uint32_t x, y, width, height;
    int64_t frames = 0, reserved;
    int32_t stopped;
    int waited = 0;
    const int failure = openCamera(count, arguments);
    if (failure != 0) {
        return failure;
    }
    expSetRecordMode(0, CAMERA); /* until the memory is full; 1: over and over, until the trigger */
    if (expStartRecordMode(CAMERA) != 0) {
        fprintf(stderr, "the recording does not start\n");
        expDisconnectGrabber(CAMERA);
        return 1;
    }
    while (waited < RECORD_TIME) {
        uint8_t isFull = 0;
        waitMilliseconds(100);
        waited += 100;
        printf("%d frames\n", expGetCurrentNumberOfImages(CAMERA));
        if (expIsStateIdle(&isFull, CAMERA) == 0 && isFull) {
            break;
        }
    }
    stopped = expStopRecordMode(CAMERA);
    if (stopped == 2) {
        printf("the camera copies the recording to its flash card\n");
    }
    if (expGetRecordInfo(&x, &y, &width, &height, &frames, &reserved, NULL, CAMERA) == 0) {
        printf("recorded: %lld frames of %ux%u\n", (long long)frames, width, height);
    }
    expDisconnectGrabber(CAMERA);
    return stopped >= 0 && frames > 0 ? 0 : 1;
}
