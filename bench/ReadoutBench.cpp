/// What a host gets out of a camera's memory: a recording of 1 GB, 1280x1024, read in blocks over
/// loopback, with requests over the serial line and packets of 1500 and 9000 bytes. The camera runs
/// in a process of its own, so that the memory is the library's alone.
#include "BlockReadout.h"
#include "CameraProcess.h"
#include "Require.h"
#include "TelvoDll.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{

constexpr const char* kAddress = "127.0.0.53";
constexpr const char* kMacAddress = "02:54:45:00:00:35";
constexpr std::uint32_t kFrameSize = 1280 * 1024;
constexpr std::uint32_t kFrames = 763; // 1 GB
/// The readout's pipeline, and a block as it comes and as the host sees it.
constexpr double kBuffers = 16 + 2 * 5'800'320.0 / (1 << 20); // MiB

std::vector<camera::CameraOptions> oneCamera()
{
    return {{.address = kAddress,
             .memoryBytes = std::uint64_t{2} << 30,
             .userSetsPrepared = true,
             .unpaced = true}};
}

/// Peak of the process's memory in MiB.
double peakMemory()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) {
            return std::stod(line.substr(std::strlen("VmHWM:"))) / 1024;
        }
    }
    return 0;
}

void record()
{
    require(expSetFrameRate(1000, kCamera) == 0, "setting the frame rate");
    require(expStartRecordMode(kCamera) == 0, "starting to record");
    std::uint32_t recorded = 0;
    while (recorded < kFrames) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        require(expGetNumberOfAllRecordedFrames(&recorded, kCamera) == 0, "counting");
    }
    require(expStopRecordMode(kCamera) == 0, "stopping to record");
}

void report(std::uint32_t packetSize)
{
    const CameraProcess camera(oneCamera());
    const double before = peakMemory();
    connectHost(kMacAddress, kAddress, packetSize);
    record();
    const double seconds = readInBlocks(kFrames);
    const double bytes = double{kFrameSize} * kFrames;
    std::printf(
        "packets of %4u bytes: %.2f GB read in %.2f s, %.2f GB/s; at most %.1f MiB of memory "
        "beside %.1f MiB of buffers\n",
        packetSize, bytes * 1e-9, seconds, bytes / seconds * 1e-9,
        std::max(0.0, peakMemory() - before - kBuffers), kBuffers);
    expDisconnectGrabber(kCamera);
}

/// In a process of its own, whose peak of memory is this readout's alone.
void reportApart(std::uint32_t packetSize)
{
    const pid_t process = fork();
    if (process == 0) {
        const int result = exitStatus([packetSize] { report(packetSize); });
        std::fflush(stdout);
        _exit(result);
    }
    int status = 0;
    require(process > 0 && waitpid(process, &status, 0) == process && status == 0, "reading out");
}

} // namespace

int main()
{
    return exitStatus([] {
        for (const std::uint32_t packetSize : {1500U, 9000U}) {
            reportApart(packetSize);
        }
    });
}
