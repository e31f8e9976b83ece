#include "ProcessorLoad.h"

namespace telvo
{

ProcessorLoad loadBetween(const ProcessorTimes& before, const ProcessorTimes& after,
                          ProcessorTimes::Seconds time)
{
    const double busy = (after.busy - before.busy).count();
    const double whole = busy + (after.idle - before.idle).count();
    return {.own = (after.own - before.own) / time, .all = whole > 0 ? busy / whole : 0};
}

} // namespace telvo
