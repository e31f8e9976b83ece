#ifndef TELVO_CAMERA_APP_COMMANDLINE_H
#define TELVO_CAMERA_APP_COMMANDLINE_H

#include "CameraOptions.h"
#include "Faults.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace camera
{

/// All that the command line asks for.
struct CommandLine {
    CameraOptions camera{};               ///< of every camera, but for the address
    std::vector<std::string> addresses{}; ///< one camera each

    PacketRates rates{};
    double frameLoss = 0;
    std::vector<PacketFault> packetFaults{};
    std::vector<FrameFault> frameFaults{};
    std::vector<AccessFault> accessFaults{};
    std::uint32_t serialLimit = kForever;
    std::uint32_t packetSizeLimit = kForever;
    bool ignoreTestPackets = false;
    bool orderedRange = false;

    std::chrono::milliseconds triggerEvery{0}; ///< 0: never
    std::chrono::milliseconds silentAfter{0};  ///< 0: never
    std::chrono::milliseconds silentFor{0};    ///< 0: to the end
    bool readCommands = false;                 ///< from standard input
    std::filesystem::path
        recordingsFolder{}; ///< where the recordings go at the end; empty: nowhere
};

/// The command line asked for help or holds an error: print text, leave with status.
struct CommandLineExit {
    std::string text;
    int status = 0; ///< 0 for help, 2 for an error
};

/// @throws CommandLineExit
[[nodiscard]] CommandLine parseCommandLine(int argc, const char* const* argv);

} // namespace camera

#endif
