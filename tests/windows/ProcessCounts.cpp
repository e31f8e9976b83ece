#include "ProcessCounts.h"

#include "Kernel.h"

#include <gtest/gtest.h>
#include <memory>
#include <tlhelp32.h>

namespace
{

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};

unsigned long openHandles()
{
    DWORD count = 0;
    EXPECT_NE(GetProcessHandleCount(GetCurrentProcess(), &count), FALSE);
    return count;
}

int runningThreads()
{
    const std::unique_ptr<void, HandleCloser> snapshot(
        CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    int count = 0;
    for (BOOL more = Thread32First(snapshot.get(), &entry); more != FALSE;
         more = Thread32Next(snapshot.get(), &entry)) {
        count += entry.th32OwnerProcessID == GetCurrentProcessId() ? 1 : 0;
    }
    return count;
}

} // namespace

ProcessCounts countProcess()
{
    return {.handles = openHandles(), .threads = runningThreads()};
}

std::ostream& operator<<(std::ostream& out, const ProcessCounts& counts)
{
    return out << counts.handles << " handles, " << counts.threads << " threads";
}
