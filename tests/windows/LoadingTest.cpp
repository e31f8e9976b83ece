#include "ExportNames.h"
#include "LoadedLibrary.h"
#include "ProcessCounts.h"

#include <gtest/gtest.h>
#include <set>

namespace
{

void loadCallUnload()
{
    const LoadedLibrary library;
    ASSERT_TRUE(library.isLoaded());
    EXPECT_EQ(FUNCTION(library, expStopLiveMode)(1), -1);
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
    const ProcessCounts before = countProcess();
    for (int i = 0; i < 100; ++i) {
        loadCallUnload();
    }
    EXPECT_EQ(countProcess(), before);
    EXPECT_EQ(GetModuleHandleA("TelvoDll.dll"), nullptr);
}

} // namespace
