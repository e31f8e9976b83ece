#include "MachineMemory.h"

#include <unistd.h>

namespace camera
{

std::uint64_t machineMemory()
{
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long pageSize = sysconf(_SC_PAGESIZE);
    return pages <= 0 || pageSize <= 0
               ? 0
               : static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(pageSize);
}

} // namespace camera
