/* What every host does first and last. */
#ifndef TELVO_EXAMPLES_COMMON_H
#define TELVO_EXAMPLES_COMMON_H

#include <TelvoDll.h>
#include <stdio.h>

enum { CAMERA = 1 }; /* any number: the id under which all functions find the camera */

/* Connects and initialises the camera of the command line, MAC and IP address. Returns 0, or what
   the program ends with. */
static int openCamera(int count, char** arguments)
{
    TelvoConnectionSettings settings = {0}; /* the library's own settings apply */
    int32_t result;
    int attempt;
    if (count < 3) {
        fprintf(stderr, "usage: %s MAC IP\n", arguments[0]);
        return 2;
    }
    /* A camera that did not start with user set 1 is prepared first, and connected once more. */
    for (attempt = 0; attempt < 2; ++attempt) {
        if (expConnectGrabber(arguments[1], arguments[2], 1, &settings, CAMERA) < 0) {
            fprintf(stderr, "no camera %s at %s\n", arguments[1], arguments[2]);
            return 1;
        }
        result = expInitializeGrabber(&settings, CAMERA);
        if (result >= 0) {
            return 0;
        }
        expDisconnectGrabber(CAMERA);
        if (result != -2) {
            break;
        }
    }
    fprintf(stderr, "the camera cannot be initialised\n");
    return 1;
}

static void waitMilliseconds(int milliseconds);

#ifdef _WIN32
#include <windows.h>
static void waitMilliseconds(int milliseconds)
{
    Sleep((DWORD)milliseconds);
}
#else
#include <time.h>
static void waitMilliseconds(int milliseconds)
{
    const struct timespec time = {milliseconds / 1000, milliseconds % 1000 * 1000000L};
    nanosleep(&time, NULL);
}
#endif

#endif
