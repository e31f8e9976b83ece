#include "ProcessorLoad.h"

#include <cstdint>
#include <ratio>
#include <windows.h>

namespace telvo
{

namespace
{

using Seconds = ProcessorTimes::Seconds;

Seconds secondsOf(const FILETIME& time)
{
    using Ticks = std::chrono::duration<std::uint64_t, std::ratio<1, 10'000'000>>;
    return Ticks(std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime);
}

Seconds ownTime()
{
    FILETIME start{};
    FILETIME end{};
    FILETIME kernel{};
    FILETIME user{};
    GetProcessTimes(GetCurrentProcess(), &start, &end, &kernel, &user);
    return secondsOf(kernel) + secondsOf(user);
}

} // namespace

ProcessorTimes processorTimes()
{
    FILETIME idle{};
    FILETIME kernel{}; // idle time is in it
    FILETIME user{};
    GetSystemTimes(&idle, &kernel, &user);
    return {.own = ownTime(),
            .busy = secondsOf(kernel) + secondsOf(user) - secondsOf(idle),
            .idle = secondsOf(idle)};
}

} // namespace telvo
