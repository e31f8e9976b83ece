/* Readout and live pictures as a C host has them, for python_readout.py to compare with: the next
 * block is asked for while the present one is used. Transfer and live mode are under way. */
#include "TelvoDll.h"

#include <string.h>
#include <time.h>

static uint32_t least(uint32_t a, uint32_t b)
{
    return a < b ? a : b;
}

/* out: where the frames go; NULL: they are only delivered. Returns 0, or -1 when it failed. */
int32_t readOut(int32_t camera, uint32_t frames, uint32_t blockFrames, size_t frameSize,
                uint8_t* out)
{
    uint32_t requested = least(blockFrames, frames);
    if (expGetRecordedFrameBlock(NULL, 0, 0, requested, camera) != 0) {
        return -1;
    }
    for (uint32_t first = 0; first < frames;) {
        int64_t got = 0;
        uint32_t status = 0;
        const uint8_t* const block = expGetRecordedFrameBlockResult(NULL, &got, &status, camera);
        if (block == NULL || got != requested) {
            return -1;
        }
        const uint32_t next = first + requested;
        const uint32_t following = least(blockFrames, frames - next);
        if (following != 0 && expGetRecordedFrameBlock(NULL, 0, next, following, camera) != 0) {
            return -1;
        }
        if (out != NULL) {
            memcpy(out + first * frameSize, block, requested * frameSize);
        }
        first = next;
        requested = following;
    }
    return 0;
}

static double now(void)
{
    struct timespec time;
    clock_gettime(CLOCK_MONOTONIC, &time);
    return (double)time.tv_sec + (double)time.tv_nsec * 1e-9;
}

/* Fetches live pictures for so long, as often as the package does. Returns how many came. */
uint32_t watchLive(int32_t camera, double seconds)
{
    const struct timespec poll = {.tv_nsec = 200000};
    uint32_t frames = 0;
    for (const double end = now() + seconds; now() < end;) {
        uint8_t status = 0;
        uint8_t last = 0;
        if (expGetPreviewImage(&status, &last, camera) != NULL) {
            ++frames;
        } else {
            nanosleep(&poll, NULL);
        }
    }
    return frames;
}
