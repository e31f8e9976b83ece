/// What a host gets out of a camera's memory: a recording of 1 GB, 1280x1024, read in blocks over
/// loopback, with requests over the serial line and packets of 1500 and 9000 bytes. The camera runs
/// in a process of its own, so that the memory is the library's alone.
#include "HostSettings.h"
#include "Require.h"
#include "TelvoDll.h"
#include "VirtualCamera.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace
{

using Clock = std::chrono::steady_clock;

constexpr const char* kAddress = "127.0.0.53";
constexpr std::uint32_t kFrameSize = 1280 * 1024;
constexpr std::uint32_t kFrames = 763; // 1 GB
constexpr std::int32_t kCamera = 1;
/// The readout's pipeline, and a block as it comes and as the host sees it.
constexpr double kBuffers = 16 + 2 * 5'800'320.0 / (1 << 20); // MiB

/// A camera in a child process, ended with its parent's object.
class CameraProcess
{
  public:
    CameraProcess() : mProcess(fork())
    {
        require(mProcess >= 0, "starting a process");
        if (mProcess == 0) {
            _exit(exitStatus(runCamera));
        }
    }
    ~CameraProcess()
    {
        kill(mProcess, SIGKILL);
        waitpid(mProcess, nullptr, 0);
    }
    CameraProcess(const CameraProcess&) = delete;
    CameraProcess& operator=(const CameraProcess&) = delete;

  private:
    static void runCamera()
    {
        camera::VirtualCamera camera({.address = kAddress,
                                      .memoryBytes = std::uint64_t{2} << 30,
                                      .userSetsPrepared = true,
                                      .unpaced = true});
        require(!camera.start(), "starting the camera");
        for (;;) {
            pause();
        }
    }

    pid_t mProcess;
};

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

void connect(std::uint32_t packetSize)
{
    const TelvoConnectionSettings settings = hostSettings(packetSize);
    std::int32_t result = -1;
    for (int i = 0; i < 50 && result != 0; ++i) { // until the camera is up
        result = expConnectGrabber("02:54:45:00:00:35", kAddress, 1, &settings, kCamera);
    }
    require(result == 0, "connecting");
    require(expInitializeGrabber(&settings, kCamera) == 0, "initialising");
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

/// @return seconds from the first request to the last byte
double readOut(std::uint32_t frames)
{
    std::uint32_t blockFrames = 0;
    require(expStartFrameBlockTransfer(kCamera) == 0, "starting the transfer");
    require(expGetFrameBlockSize(&blockFrames, kCamera) == 0, "asking for the block size");
    const auto start = Clock::now();
    for (std::uint32_t first = 0; first < frames; first += blockFrames) {
        const std::uint32_t count = std::min(blockFrames, frames - first);
        require(expGetRecordedFrameBlock(nullptr, 0, first, count, kCamera) == 0, "requesting");
        std::int64_t got = 0;
        std::uint32_t status = 0;
        require(expGetRecordedFrameBlockResult(nullptr, &got, &status, kCamera) != nullptr &&
                    got == count,
                "reading a block");
    }
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    require(expStopFrameBlockTransfer(kCamera) == 0, "stopping the transfer");
    return seconds;
}

void report(std::uint32_t packetSize)
{
    const CameraProcess camera;
    const double before = peakMemory();
    connect(packetSize);
    record();
    const double seconds = readOut(kFrames);
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
