#include "Kernel.h"

/// Loading and unloading the library, and threads that come and go, need nothing: cameras are
/// connected and given up by the host's calls alone. Nor does the end of the process, at which the
/// library's own threads are gone and waiting for one would last for ever.
extern "C" BOOL WINAPI DllMain(HINSTANCE /*instance*/, DWORD /*reason*/, LPVOID /*reserved*/)
{
    return TRUE;
}
