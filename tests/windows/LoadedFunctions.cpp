#include "HostFunctions.h"
#include "Kernel.h"

#include <cstdio>
#include <cstdlib>

namespace
{

template <typename Function>
void find(HMODULE library, const char* name, Function*& function)
{
    function = reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    if (function == nullptr) {
        std::printf("no function: %s\n", name);
        std::exit(1);
    }
}

} // namespace

HostFunctions hostFunctions(const char* library)
{
    const HMODULE loaded = LoadLibraryA(library);
    HostFunctions functions;
    find(loaded, "expConnectGrabber", functions.connect);
    find(loaded, "expInitializeGrabber", functions.initialize);
    find(loaded, "expStartLiveMode", functions.startLive);
    find(loaded, "expDisconnectGrabber", functions.disconnect);
    return functions;
}
