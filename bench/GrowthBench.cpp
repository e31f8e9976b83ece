/// What 1, 2, 4 and 8 cameras cost in one host process: 50 pictures a second of 640x480 from each,
/// in single packets of 1500 bytes; processor per GB and memory per camera, beside those of one
/// alone. The cameras are a process of their own. Needs the loopback addresses for itself:
/// scripts/in-own-network.sh. Argument: seconds per figure, 10 without.
#include "CameraProcess.h"
#include "LiveHost.h"
#include "ProcessUse.h"
#include "Require.h"

#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <list>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{

constexpr std::int64_t kWidth = 640;
constexpr std::int64_t kHeight = 480;
constexpr std::int64_t kRate = 50; // pictures per second
constexpr std::uint32_t kBuffers = 16;
constexpr std::chrono::milliseconds kWarmUp{4000}; // until every receiver has found its way

std::string addressOf(int camera)
{
    return "127.0.0." + std::to_string(60 + camera);
}

std::vector<camera::CameraOptions> cameras(int count)
{
    std::vector<camera::CameraOptions> all;
    for (int i = 0; i < count; ++i) {
        camera::CameraOptions options{.address = addressOf(i), .memoryBytes = 16 << 20};
        options.send = gige::net::SendMode::Single;
        options.settings = {{camera::FeatureId::AcquisitionFrameRateRaw, kRate}};
        all.push_back(options);
    }
    return all;
}

/// Each host on a thread of its own. @return all together
LiveFigures takeAll(std::list<LiveHost>& hosts, std::chrono::milliseconds time)
{
    std::vector<LiveFigures> figures(hosts.size());
    std::vector<std::thread> threads;
    for (LiveHost& host : hosts) {
        threads.emplace_back(
            [&host, time, &mine = figures[threads.size()]] { mine = host.take(time); });
    }
    LiveFigures sum;
    for (std::size_t i = 0; i < threads.size(); ++i) {
        threads[i].join();
        sum += figures[i];
    }
    return sum;
}

void report(int count, std::chrono::seconds time)
{
    const CameraProcess process(cameras(count));
    const double memoryBefore = residentBytes();
    std::list<LiveHost> hosts;
    for (int i = 0; i < count; ++i) {
        hosts.emplace_back(addressOf(i),
                           LiveSettings{.width = kWidth, .height = kHeight, .buffers = kBuffers});
    }
    takeAll(hosts, kWarmUp);
    const double before = cpuSeconds();
    const LiveFigures figures = takeAll(hosts, time);
    const double used = cpuSeconds() - before;
    const double memory = residentBytes() - memoryBefore;
    std::printf("%d cameras: %.3f CPU s/GB, %.1f MB per camera, of which %.1f MB are the host's "
                "buffers; %" PRId64 " of %" PRId64 " frames lost\n",
                count, used / figures.bytes * 1e9, memory / count * 1e-6,
                static_cast<double>(kBuffers * kWidth * kHeight) * 1e-6,
                figures.failed + figures.dropped, figures.failed + figures.dropped + figures.whole);
}

/// In a process of its own, so that nothing is left of the one before.
void reportApart(int count, std::chrono::seconds time)
{
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        const int status = exitStatus([&] { report(count, time); });
        std::fflush(stdout);
        _exit(status);
    }
    int status = 0;
    waitpid(child, &status, 0);
    require(status == 0, "a measurement");
}

} // namespace

int main(int argc, char** argv)
{
    const std::chrono::seconds time(argc > 1 ? std::atoi(argv[1]) : 10);
    return exitStatus([&] {
        for (const int count : {1, 2, 4, 8}) {
            reportApart(count, time);
        }
    });
}
