#include "ProcessorLoad.h"

#include <gtest/gtest.h>

namespace
{

using namespace telvo;
using Seconds = ProcessorTimes::Seconds;

TEST(ProcessorLoad, IsOfACoreAndOfAllCores)
{
    const ProcessorTimes before{.own = Seconds(1), .busy = Seconds(10), .idle = Seconds(20)};
    const ProcessorTimes after{.own = Seconds(2.5), .busy = Seconds(13), .idle = Seconds(21)};
    const ProcessorLoad load = loadBetween(before, after, Seconds(2));
    EXPECT_DOUBLE_EQ(load.own, 0.75);
    EXPECT_DOUBLE_EQ(load.all, 0.75);
}

TEST(ProcessorLoad, IsNoneWhereTheSystemDoesNotTell)
{
    EXPECT_EQ(loadBetween({}, {.own = Seconds(1)}, Seconds(1)).all, 0);
}

TEST(ProcessorTimes, GrowWithWhatIsWorkedHere)
{
    const ProcessorTimes before = processorTimes();
    ProcessorTimes after = before;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (after.own - before.own < Seconds(0.1) && std::chrono::steady_clock::now() < deadline) {
        after = processorTimes();
    }
    EXPECT_GE((after.own - before.own).count(), 0.1);
    EXPECT_GT((after.busy - before.busy).count(), 0) << "this process is among all";
    EXPECT_GT(after.idle.count(), 0) << "since the machine was switched on";
}

} // namespace
