/// How busy the processor is; one source per system.
#ifndef TELVO_TOOLS_TELVO_PROCESSORLOAD_H
#define TELVO_TOOLS_TELVO_PROCESSORLOAD_H

#include <chrono>

namespace telvo
{

/// Processor time that was used so far.
struct ProcessorTimes {
    using Seconds = std::chrono::duration<double>;

    Seconds own{};  // by this process: all its threads, and the system on their behalf
    Seconds busy{}; // by everything that runs here, of all cores together
    Seconds idle{}; // by nothing, likewise; with busy 0: the system does not tell
};

ProcessorTimes processorTimes();

/// How much of the processor was used for a while.
struct ProcessorLoad {
    double own = 0; // by this process; 1: a whole core
    double all = 0; // by everything that runs here; 1: all cores
};

/// @param time  between both, more than 0
ProcessorLoad loadBetween(const ProcessorTimes& before, const ProcessorTimes& after,
                          ProcessorTimes::Seconds time);

} // namespace telvo

#endif
