#include "DebugListener.h"
#include "ToolError.h"

#include "Kernel.h"
#include "Reasons.h"
#include "Repetitions.h"
#include "StackLog.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

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

TEST(DebugListener, ReceivesALineOfTheStackWithItsSender)
{
    Listener first;
    Listener second;
    gige::log::say("10.0.0.7", gige::log::noResends());
    for (Listener* const listener : {&first, &second}) {
        const auto line = listener->next(kLong);
        ASSERT_TRUE(line);
        EXPECT_EQ(line->source, telvo::LineSource::Stack);
        EXPECT_EQ(line->text,
                  "10.0.0.7: the camera sends no packet again -> each lost packet costs a picture: "
                  "'--set packet-delay=N' at live and download spreads them");
        EXPECT_EQ(line->processId, static_cast<std::uint32_t>(getpid()));
    }
}

TEST(DebugListener, ShowsTheSameLineOfTheStackAgainAfterASecond)
{
    Listener listener;
    const auto sayIt = [] { gige::log::say("", {"nothing works"}); };
    sayIt();
    sayIt();
    EXPECT_EQ(listener.next(kLong)->text, "nothing works");
    EXPECT_FALSE(listener.next(kShort));
    std::this_thread::sleep_for(gige::log::Repetitions::kPause);
    sayIt();
    EXPECT_EQ(listener.next(kLong)->text, "nothing works (1 more in between)");
}

TEST(DebugListener, TellsLinesOfLibraryAndStackApart)
{
    Listener listener;
    OutputDebugStringA("library\r\n");
    EXPECT_EQ(listener.next(kLong)->source, telvo::LineSource::Library);
    gige::log::say("", {"stack"});
    EXPECT_EQ(listener.next(kLong)->source, telvo::LineSource::Stack);
}

TEST(DebugListener, IsNotWaitedForByTheStack)
{
    Listener listener;
    for (int i = 0; i < 2000; ++i) { // more than the system keeps
        gige::log::say("", {gige::log::Line("line ") << i});
    }
    EXPECT_EQ(listener.next(kLong)->text, "line 0");
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

/// Whoever has the lines passes them on only while it takes them itself.
void expectBothGet(Listener& one, Listener& other, const char* text)
{
    OutputDebugStringA(text);
    const auto first = one.next(kLong);
    const auto second = other.next(kLong);
    ASSERT_TRUE(first && second) << text;
    EXPECT_EQ(first->text, text);
    EXPECT_EQ(second->text, text);
    EXPECT_EQ(second->processId, static_cast<std::uint32_t>(getpid()));
}

TEST(DebugListener, SharesTheLinesWithOthers)
{
    Listener first;
    Listener second;
    Listener third;
    expectBothGet(first, second, "one\r\n");
    EXPECT_EQ(third.next(kLong)->text, "one\r\n");
    expectBothGet(first, third, "");
}

TEST(DebugListener, KeepsTheLinesForOneThatIsSlow)
{
    constexpr int kLines = 100;
    Listener first;
    Listener second;
    for (int i = 0; i < kLines; ++i) {
        OutputDebugStringA(std::to_string(i).c_str());
        ASSERT_TRUE(first.next(kLong));
    }
    for (int i = 0; i < kLines; ++i) {
        const auto line = second.next(kLong);
        ASSERT_TRUE(line) << i;
        EXPECT_EQ(line->text, std::to_string(i));
    }
}

TEST(DebugListener, DoesNotWaitForOneThatDoesNotRead)
{
    Listener first;
    const Listener second;
    const std::string longOne(3000, 'x');
    for (int i = 0; i < 1000; ++i) {
        OutputDebugStringA(longOne.c_str());
        ASSERT_TRUE(first.next(kLong)) << i;
    }
}

TEST(DebugListener, TakesTheLinesWhenTheFirstOneEnds)
{
    auto first = std::make_unique<Listener>();
    Listener second;
    Listener third;
    expectBothGet(*first, second, "one\r\n");
    first.reset();
    EXPECT_FALSE(second.next(kShort)); // has them from here on
    EXPECT_EQ(third.next(kLong)->text, "one\r\n");
    expectBothGet(second, third, "two\r\n");
}

TEST(DebugListener, HasALimitOfViewers)
{
    std::vector<std::unique_ptr<Listener>> viewers;
    for (int i = 0; i < 9; ++i) {
        viewers.push_back(std::make_unique<Listener>());
    }
    EXPECT_THROW(Listener(), Failure);
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
