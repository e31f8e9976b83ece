#include "ProcessUsage.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <malloc.h>

namespace
{

/// The number behind a name in the process's status; 0: there is none.
std::size_t statusNumber(const std::string& name)
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == name) {
            std::size_t number = 0;
            status >> number;
            return number;
        }
    }
    return 0;
}

std::size_t openDescriptors()
{
    const std::filesystem::directory_iterator all("/proc/self/fd");
    const auto count = std::distance(begin(all), end(all));
    return static_cast<std::size_t>(count) - 1; // one reads this folder
}

std::size_t allocated()
{
    const struct mallinfo2 all = mallinfo2();
    return (all.uordblks + all.hblkhd) / 1024;
}

} // namespace

ProcessUsage ProcessUsage::now()
{
    malloc_trim(0);
    return {.memory = statusNumber("VmRSS:"),
            .heap = allocated(),
            .descriptors = openDescriptors(),
            .threads = statusNumber("Threads:")};
}

std::string ProcessUsage::text() const
{
    return std::to_string(memory) + " KiB, of the heap " + std::to_string(heap) + " KiB, " +
           std::to_string(descriptors) + " descriptors, " + std::to_string(threads) + " threads";
}
