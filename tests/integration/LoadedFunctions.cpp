#include "HostFunctions.h"

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>

namespace
{

template <typename Function>
void find(void* library, const char* name, Function*& function)
{
    function = reinterpret_cast<Function*>(dlsym(library, name));
    if (function == nullptr) {
        std::printf("no function: %s\n", name);
        std::exit(1);
    }
}

} // namespace

HostFunctions hostFunctions(const char* library)
{
    void* const loaded = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    HostFunctions functions;
    find(loaded, "expConnectGrabber", functions.connect);
    find(loaded, "expInitializeGrabber", functions.initialize);
    find(loaded, "expStartLiveMode", functions.startLive);
    find(loaded, "expDisconnectGrabber", functions.disconnect);
    return functions;
}
