#include "MachineMemory.h"

#include <windows.h>

namespace camera
{

std::uint64_t machineMemory()
{
    MEMORYSTATUSEX status{};
    status.dwLength = sizeof status;
    return GlobalMemoryStatusEx(&status) != 0 ? status.ullTotalPhys : 0;
}

} // namespace camera
