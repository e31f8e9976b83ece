#include "ThreadTime.h"

#include <windows.h>

#include <cstdint>
#include <ratio>

namespace gige::net
{

namespace
{

using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>; // 100 ns

Ticks ticksOf(const FILETIME& time)
{
    return Ticks((std::int64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime);
}

} // namespace

std::chrono::nanoseconds threadTime()
{
    FILETIME created{};
    FILETIME ended{};
    FILETIME kernel{};
    FILETIME user{};
    (void)GetThreadTimes(GetCurrentThread(), &created, &ended, &kernel, &user);
    return ticksOf(kernel) + ticksOf(user);
}

} // namespace gige::net
