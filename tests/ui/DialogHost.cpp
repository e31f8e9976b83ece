// A host program that opens one of the library's dialogs and says on its standard output what came
// of it. See usage below.

#include "TelvoDll.h"

#ifdef _WIN32
#include "WindowWatch.h"
#endif

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>

namespace
{

constexpr std::int32_t kCamera = 1;
constexpr std::int32_t kPatience = 60'000; // milliseconds

void say(const std::string& line)
{
    std::puts(line.c_str());
    std::fflush(stdout);
}

bool connect(const std::string& mac, const std::string& ip)
{
    TelvoConnectionSettings settings{};
    settings.useSettings = 1;
    settings.packetSize = 1440;
    const std::int32_t result = expConnectGrabber(mac.c_str(), ip.c_str(), 1, &settings, kCamera);
    if (result >= 0) {
        // On a busy machine the link must not be lost while the user sits before the dialog.
        expSetStreamParam("HeartbeatTimeout", kPatience, kCamera);
    }
    say("connect: " + std::to_string(result));
    return result >= 0;
}

std::string parameter(const char* key)
{
    std::array<char, 64> text{};
    const std::uint32_t size = text.size();
    return expGetParam(key, text.data(), &size, kCamera) == 0 ? text.data() : "unknown";
}

int runFinder()
{
    if (!connect("", "")) {
        return 1;
    }
    say("camera: " + parameter("MACAddress") + " " + parameter("IPAddress"));
    return 0;
}

int runBrowser(const std::string& mac, const std::string& ip, std::int32_t (*show)(std::int32_t))
{
    if (!connect(mac, ip)) {
        return 1;
    }
    say("shown: " + std::to_string(show(kCamera)));
    return 0;
}

} // namespace

int main(int count, char** arguments)
{
#ifdef _WIN32
    const WindowWatch watch;
#endif
    const std::string dialog = count > 1 ? arguments[1] : "";
    int result = 2;
    if (dialog == "finder" && count == 2) {
        result = runFinder();
    } else if (dialog == "gev-params" && count == 4) {
        result = runBrowser(arguments[2], arguments[3], &expShowGEVParams);
    } else if (dialog == "stream-params" && count == 4) {
        result = runBrowser(arguments[2], arguments[3], &expShowStreamParams);
    } else {
        say("usage: dialog_host finder | gev-params MAC IP | stream-params MAC IP");
    }
    expDisconnectGrabber(kCamera);
    return result;
}
