#ifndef TELVO_BENCH_PROCESSUSE_H
#define TELVO_BENCH_PROCESSUSE_H

#include <ctime>
#include <fstream>
#include <unistd.h>

/// CPU seconds that this process has used, all threads together.
inline double cpuSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// Memory of this process that is there, bytes.
inline double residentBytes()
{
    double all = 0;
    double resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

#endif
