#include "ProcessorLoad.h"

#include <array>
#include <cstddef>
#include <fstream>
#include <numeric>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

namespace telvo
{

namespace
{

using Seconds = ProcessorTimes::Seconds;

Seconds secondsOf(const timeval& time)
{
    return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
}

Seconds ownTime()
{
    rusage use{};
    getrusage(RUSAGE_SELF, &use);
    return secondsOf(use.ru_utime) + secondsOf(use.ru_stime);
}

/// "cpu" and the ticks of all cores: user, nice, system, idle, waiting for a disk, interrupts, soft
/// interrupts, stolen by other guests of this machine's host. More that may follow is counted in
/// the first two.
void readMachine(ProcessorTimes& times)
{
    constexpr std::size_t kIdle = 3;
    constexpr std::size_t kDiskWait = 4;
    std::array<double, 8> ticks{};
    std::ifstream file("/proc/stat");
    std::string name;
    file >> name;
    for (double& each : ticks) {
        file >> each;
    }
    if (!file) {
        return;
    }
    const Seconds tick(1.0 / static_cast<double>(sysconf(_SC_CLK_TCK)));
    const double idle = ticks[kIdle] + ticks[kDiskWait];
    times.idle = idle * tick;
    times.busy = (std::accumulate(ticks.begin(), ticks.end(), 0.0) - idle) * tick;
}

} // namespace

ProcessorTimes processorTimes()
{
    ProcessorTimes times{.own = ownTime()};
    readMachine(times);
    return times;
}

} // namespace telvo
