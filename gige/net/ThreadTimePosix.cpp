#include "ThreadTime.h"

#include <ctime>

namespace gige::net
{

std::chrono::nanoseconds threadTime()
{
    timespec time{};
    (void)clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace gige::net
