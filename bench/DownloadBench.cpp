/**
 * What the tool gets out of a camera's memory into files: a recording of 2 GB, 1280x1024, over
 * loopback with packets of 9000 bytes, beside what bounds it: the bare readout in blocks, and the
 * disk's plain writing. All times are until the device has every byte. The camera runs in a process
 * of its own; memory is the peak of the tool's.
 */
#include "BlockReadout.h"
#include "CameraProcess.h"
#include "HostSettings.h"
#include "Require.h"
#include "TelvoDll.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace
{

using Clock = std::chrono::steady_clock;

constexpr const char* kAddress = "127.0.0.54";
constexpr const char* kMacAddress = "02:54:45:00:00:36";
constexpr std::uint32_t kFrameSize = 1280 * 1024;
constexpr std::uint32_t kFrames = 1526; // 2 GB
constexpr double kBytes = double{kFrameSize} * kFrames;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void report(const char* what, double bytes, double seconds, const std::string& more = "")
{
    std::printf("%-24s %6.2f GB/s%s\n", what, bytes / seconds * 1e-9, more.c_str());
    std::fflush(stdout);
}

camera::CameraOptions recordingCamera()
{
    camera::CameraOptions options{.address = kAddress,
                                  .memoryBytes = std::uint64_t{kFrames} * kFrameSize,
                                  .recordAtPowerOn = true,
                                  .userSetsPrepared = true,
                                  .unpaced = true};
    options.settings[camera::FeatureId::AcquisitionFrameRateRaw] = 1000;
    return options;
}

void awaitRecording()
{
    const TelvoConnectionSettings settings = hostSettings(9000);
    for (std::uint32_t frames = 0; frames < kFrames;) {
        usleep(300'000);
        if (expConnectGrabber(kMacAddress, kAddress, 1, &settings, kCamera) == 0) {
            expInitializeGrabber(&settings, kCamera);
            expGetNumberOfAllRecordedFrames(&frames, kCamera);
            expDisconnectGrabber(kCamera);
        }
    }
}

double readBare()
{
    connectHost(kMacAddress, kAddress, 9000);
    const double seconds = readInBlocks(kFrames);
    expDisconnectGrabber(kCamera);
    return seconds;
}

double writePlain(const std::string& path)
{
    const std::vector<std::uint8_t> frame(kFrameSize, 0x5A);
    const auto start = Clock::now();
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    require(file >= 0, "making a file");
    for (std::uint32_t i = 0; i < kFrames; ++i) {
        require(write(file, frame.data(), frame.size()) == ssize_t{kFrameSize}, "writing");
    }
    require(fsync(file) == 0 && close(file) == 0, "syncing");
    const double seconds = secondsSince(start);
    std::filesystem::remove(path);
    return seconds;
}

/// What the tool prints of a download as JSON.
std::string readAll(int descriptor)
{
    std::string text;
    std::array<char, 4096> piece{};
    for (ssize_t size = 0; (size = read(descriptor, piece.data(), piece.size())) > 0;) {
        text.append(piece.data(), static_cast<std::size_t>(size));
    }
    return text;
}

void reportDownload(const char* format, const std::string& path)
{
    std::array<int, 2> output{};
    require(pipe(output.data()) == 0, "making a pipe");
    const pid_t process = fork();
    if (process == 0) {
        dup2(output[1], STDOUT_FILENO);
        close(output[0]);
        execl(TELVO_TOOL_PROGRAM, "telvo", "download", "--camera", kAddress, "--format", format,
              "--out", path.c_str(), "--packet-size", "9000", "--json", nullptr);
        _exit(127);
    }
    close(output[1]);
    const std::string json = readAll(output[0]);
    close(output[0]);
    rusage use{};
    int status = 0;
    require(wait4(process, &status, 0, &use) == process && status == 0, "downloading");
    const std::size_t at = json.find("\"seconds\": ");
    require(at != std::string::npos, "finding the time");
    char memory[64];
    std::snprintf(memory, sizeof memory, ", at most %ld MiB of memory", use.ru_maxrss / 1024);
    report((std::string("download --format ") + format).c_str(), kBytes,
           std::stod(json.substr(at + 11)), memory);
    std::filesystem::remove_all(path);
    std::filesystem::remove(path + ".json");
}

} // namespace

/// @param argv  folder for the files [the present one]
int main(int argc, char** argv)
{
    return exitStatus([&] {
        const std::string folder = argc > 1 ? argv[1] : ".";
        const std::string path = folder + "/bench-download-" + std::to_string(getpid());
        const CameraProcess camera({recordingCamera()});
        awaitRecording();
        report("bare readout in blocks", kBytes, readBare());
        report("plain writing", kBytes, writePlain(path));
        for (const char* format : {"raw", "tiff", "png", "mkv", "mp4"}) {
            reportDownload(format, path);
        }
    });
}
