/// A host that leaves its camera connected until the process ends:
/// exit_host HANDLER LIBRARY MAC-ADDRESS IP-ADDRESS
/// Where HANDLER says so it then disconnects, and prints what came of it. The library is loaded
/// while the program runs, unless LIBRARY is empty: then it is the one linked to.
#include "HostFunctions.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace
{

constexpr std::int32_t kCamera = 1;

HostFunctions library;
std::string_view handler;

void disconnect()
{
    std::printf("disconnected: %d\n", library.disconnect(kCamera));
}

void disconnectIf(std::string_view wanted)
{
    if (handler == wanted && library.areAllThere()) {
        disconnect();
    }
}

struct GlobalHost {
    ~GlobalHost() { disconnectIf("static-destructor"); }
};

// Constructed before the library is used, so destroyed after its statics.
const GlobalHost kGlobalHost;

#ifdef __ELF__
[[gnu::destructor]] void endProgram()
{
    disconnectIf("destructor-function");
    std::fflush(stdout);
}
#endif

int connectAndGoLive(const char* macAddress, const char* ipAddress)
{
    TelvoConnectionSettings settings{};
    settings.useSettings = 1;
    settings.packetSize = 1440;
    if (library.connect(macAddress, ipAddress, 1, &settings, kCamera) != 0 ||
        library.initialize(&settings, kCamera) != 0 || library.startLive(kCamera) != 0) {
        std::puts("no camera");
        return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 5) {
        return 2;
    }
    handler = argv[1];
    std::atexit([] { disconnectIf("atexit"); }); // before the library's own
    library = hostFunctions(argv[2]);
    if (!library.areAllThere()) {
        std::puts("no library");
        return 1;
    }
    return connectAndGoLive(argv[3], argv[4]);
}
