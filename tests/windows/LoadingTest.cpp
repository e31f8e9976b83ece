#include "ExportNames.h"
#include "LoadedLibrary.h"

#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <tlhelp32.h>

namespace
{

DWORD openHandles()
{
    DWORD count = 0;
    EXPECT_NE(GetProcessHandleCount(GetCurrentProcess(), &count), FALSE);
    return count;
}

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};

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

void loadCallUnload()
{
    const LoadedLibrary library;
    ASSERT_TRUE(library.isLoaded());
    EXPECT_EQ(FUNCTION(library, expStopLiveMode)(1), -1);
}

/// A whole way through the network layer: nobody answers at this address.
void loadSearchUnload()
{
    const LoadedLibrary library;
    ASSERT_TRUE(library.isLoaded());
    const TelvoConnectionSettings settings{};
    EXPECT_EQ(FUNCTION(library, expConnectGrabber)("127.0.0.99", "127.0.0.99", 1, &settings, 1),
              -1);
}

TEST(Loading, FindsEveryFunctionOfTheHeaderByName)
{
    const LoadedLibrary library;
    ASSERT_TRUE(library.isLoaded()) << "error " << GetLastError();
    std::set<FARPROC> found;
    for (const char* name : kExportNames) {
        EXPECT_NE(library.find(name), nullptr) << name;
        found.insert(library.find(name));
    }
    EXPECT_EQ(found.size(), 118U);
}

TEST(Loading, LeaksNoHandleAndNoThreadInAHundredTurns)
{
    loadCallUnload(); // what the system opens once for a process
    const DWORD handles = openHandles();
    const int threads = runningThreads();
    for (int i = 0; i < 100; ++i) {
        loadCallUnload();
    }
    EXPECT_EQ(openHandles(), handles);
    EXPECT_EQ(runningThreads(), threads);
    EXPECT_EQ(GetModuleHandleA("TelvoDll.dll"), nullptr);
}

TEST(Loading, LeaksNothingAfterASearchInTheNetwork)
{
    loadSearchUnload();
    const DWORD handles = openHandles();
    const int threads = runningThreads();
    for (int i = 0; i < 2; ++i) {
        loadSearchUnload();
    }
    EXPECT_EQ(openHandles(), handles);
    EXPECT_EQ(runningThreads(), threads);
    EXPECT_EQ(GetModuleHandleA("TelvoDll.dll"), nullptr);
}

} // namespace
