/* Reads a recording back in blocks, and checks that no frame is missing. */
#include "common.h"

/* Checks the counters of a block, the first of which has to be `expected`. Returns the gaps. */
static int gapsIn(const uint8_t* block, int64_t frames, uint32_t frameSize, uint16_t* expected)
{
    int gaps = 0;
    int64_t i;
    for (i = 0; i < frames; ++i) {
        const uint16_t counter = telvoFrameHeader(block + i * frameSize).counter;
        gaps += counter != *expected;
        *expected = (uint16_t)(counter + 1);
    }
    return gaps;
}

int main(int count, char** arguments)
{
    uint32_t width = 0, height = 0, all = 0, perBlock = 0, first = 0;
    uint16_t expected = 0;
    int gaps = 0;
    const int failure = openCamera(count, arguments);
    if (failure != 0) {
        return failure;
    }
    expGetWidth(&width, CAMERA);
    expGetHeight(&height, CAMERA);
    expGetNumberOfAllRecordedFrames(&all, CAMERA);
    if (expStartFrameBlockTransfer(CAMERA) != 0 || expGetFrameBlockSize(&perBlock, CAMERA) != 0) {
        fprintf(stderr, "the readout does not start\n");
        expDisconnectGrabber(CAMERA);
        return 1;
    }
    while (first < all) {
        const uint32_t wanted = all - first < perBlock ? all - first : perBlock;
        int64_t frames = 0;
        uint32_t status = 0;
        const uint8_t* block;
        if (expGetRecordedFrameBlock(NULL, 0, first, wanted, CAMERA) != 0) {
            break;
        }
        block = expGetRecordedFrameBlockResult(NULL, &frames, &status, CAMERA); /* waits */
        if (block == NULL) {
            break;
        }
        if (first == 0) { /* a recording may begin with any counter */
            expected = telvoFrameHeader(block).counter;
        }
        gaps += gapsIn(block, frames, width * height, &expected);
        first += (uint32_t)frames;
    }
    expStopFrameBlockTransfer(CAMERA);
    expDisconnectGrabber(CAMERA);
    printf("%u of %u frames read, %d gaps\n", first, all, gaps);
    return first == all && all > 0 && gaps == 0 ? 0 : 1;
}
