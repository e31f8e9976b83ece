#include "ProgressBar.h"

#include <gtest/gtest.h>
#include <sstream>

namespace
{

using namespace telvo;

TEST(ProgressBar, DrawsOneLine)
{
    std::ostringstream out;
    ProgressBar bar(out, true, "live", 60);
    bar.show(20);
    EXPECT_EQ(out.str(), "\rlive [##########--------------------] 20/60");
}

TEST(ProgressBar, WritesNothingWhenNobodyWatches)
{
    std::ostringstream out;
    {
        ProgressBar bar(out, false, "live", 50);
        bar.show(25);
    }
    EXPECT_EQ(out.str(), "");
}

TEST(ProgressBar, DoesNotRedrawAtOnce)
{
    std::ostringstream out;
    ProgressBar bar(out, true, "live", 60);
    bar.show(20);
    const std::string first = out.str();
    bar.show(21);
    EXPECT_EQ(out.str(), first);
}

TEST(ProgressBar, WipesItsLineAtTheEnd)
{
    std::ostringstream out;
    {
        ProgressBar bar(out, true, "a", 1);
        bar.show(1);
    }
    const std::string line = "a [##############################] 1/1";
    EXPECT_EQ(out.str(), '\r' + line + '\r' + std::string(line.size(), ' ') + '\r');
}

TEST(ProgressBar, IsFullWhenMoreIsDoneThanExpected)
{
    std::ostringstream out;
    ProgressBar bar(out, true, "a", 0);
    bar.show(5);
    EXPECT_EQ(out.str(), "\ra [##############################] 5/1");
}

} // namespace
