#include "DebugListener.h"
#include "ToolError.h"

#include "Kernel.h"

#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

namespace
{

using namespace std::chrono_literals;
using telvo::Failure;
using Listener = telvo::DebugListener;

constexpr auto kLong = 5s; // generous: a busy machine
constexpr auto kShort = 20ms;

TEST(DebugListener, ReceivesALineWithItsSender)
{
    Listener listener;
    OutputDebugStringA("Vorg\xE4"
                       "nger\r\n");
    const auto line = listener.next(kLong);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->text, "Vorg\xE4"
                          "nger\r\n");
    EXPECT_EQ(line->processId, static_cast<std::uint32_t>(getpid()));
}

TEST(DebugListener, KeepsTheOrderOfLines)
{
    Listener listener;
    // Windows has room for one line, and its sender waits.
    const std::jthread sender([] {
        OutputDebugStringA("one\r\n");
        OutputDebugStringA("two\r\n");
    });
    EXPECT_EQ(listener.next(kLong)->text, "one\r\n");
    EXPECT_EQ(listener.next(kLong)->text, "two\r\n");
}

TEST(DebugListener, GivesNothingWhileNobodyLogs)
{
    Listener listener;
    EXPECT_FALSE(listener.next(kShort));
}

TEST(DebugListener, ReceivesAnEmptyLine)
{
    Listener listener;
    OutputDebugStringA("");
    const auto line = listener.next(kLong);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->text, "");
}

TEST(DebugListener, IsTheOnlyOne)
{
    const Listener first;
    try {
        const Listener second;
        FAIL() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_STREQ(failure.what(), "another viewer shows the debug lines already");
    }
}

TEST(DebugListener, LeavesTheLinesToTheNextViewer)
{
    {
        const Listener first;
    }
    Listener second;
    OutputDebugStringA("again\r\n");
    EXPECT_EQ(second.next(kLong)->text, "again\r\n");
}

} // namespace
