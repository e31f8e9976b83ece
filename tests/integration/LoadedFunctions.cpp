#include "HostFunctions.h"
#include "LibrarySymbol.h"

namespace
{

template <typename Function>
void find(const char* library, const char* name, Function*& function)
{
    function = reinterpret_cast<Function*>(librarySymbol(library, name));
}

} // namespace

HostFunctions hostFunctions(const char* library)
{
    HostFunctions functions;
    find(library, "expConnectGrabber", functions.connect);
    find(library, "expInitializeGrabber", functions.initialize);
    find(library, "expStartLiveMode", functions.startLive);
    find(library, "expDisconnectGrabber", functions.disconnect);
    return functions;
}
