#include "HostParameters.h"

#include <gtest/gtest.h>

namespace
{

/// One setting "Timeout" (10 to 5000, at first 1000) and one reading "Blocks" (7).
class HostParametersTest : public testing::Test
{
  protected:
    HostParametersTest()
    {
        parameters.addSetting(
            "Timeout", {.minimum = 10, .maximum = 5000}, [this] { return timeout; },
            [this](std::int64_t value) { timeout = value; });
        parameters.addReading("Blocks", [] { return std::int64_t{7}; });
    }

    PvGenInteger& integer(const char* name)
    {
        return dynamic_cast<PvGenInteger&>(*parameters.Get(name));
    }

    std::int64_t timeout = 1000;
    HostParameters parameters;
};

TEST_F(HostParametersTest, ReadsAndWritesTheOwnersValue)
{
    std::int64_t value = 0;
    EXPECT_TRUE(integer("Timeout").GetValue(value).IsOK());
    EXPECT_EQ(value, 1000);
    EXPECT_TRUE(integer("Timeout").SetValue(5000).IsOK());
    EXPECT_EQ(timeout, 5000);
}

TEST_F(HostParametersTest, RefusesAValueOutsideTheLimits)
{
    EXPECT_EQ(integer("Timeout").SetValue(9), PvResult::Code::OutOfRange);
    EXPECT_EQ(integer("Timeout").SetValue(5001), PvResult::Code::OutOfRange);
    EXPECT_EQ(timeout, 1000);
}

TEST_F(HostParametersTest, ReportsTheLimits)
{
    std::int64_t minimum = 0;
    std::int64_t maximum = 0;
    EXPECT_TRUE(integer("Timeout").GetMin(minimum).IsOK());
    EXPECT_TRUE(integer("Timeout").GetMax(maximum).IsOK());
    EXPECT_EQ(minimum, 10);
    EXPECT_EQ(maximum, 5000);
}

TEST_F(HostParametersTest, AReadingCannotBeWritten)
{
    std::int64_t value = 0;
    EXPECT_TRUE(integer("Blocks").GetValue(value).IsOK());
    EXPECT_EQ(value, 7);
    EXPECT_EQ(integer("Blocks").SetValue(1), PvResult::Code::AccessDenied);
}

TEST_F(HostParametersTest, AnUnknownNameIsNull)
{
    EXPECT_EQ(parameters.Get("timeout"), nullptr);
    EXPECT_EQ(parameters.Get(""), nullptr);
}

TEST_F(HostParametersTest, AreBrowsedAsSettingsAndStatistics)
{
    const gige::ui::FeatureNode root = parameters.features();
    ASSERT_EQ(root.children.size(), 2U);
    EXPECT_EQ(root.children[0].label, "Settings");
    EXPECT_EQ(root.children[1].label, "Statistics");
    ASSERT_EQ(root.children[0].children.size(), 1U);

    gige::ui::Feature& setting = *root.children[0].children[0].feature;
    EXPECT_EQ(setting.info().name, "Timeout");
    EXPECT_EQ(setting.read().value, gige::ui::FeatureValue(std::int64_t{1000}));
    EXPECT_EQ(std::get<gige::ui::IntegerLimits>(setting.read().limits).maximum, 5000);
    EXPECT_EQ(setting.write(std::int64_t{20}), "");
    EXPECT_EQ(timeout, 20);
    EXPECT_EQ(setting.write(std::int64_t{5001}), "OUT_OF_RANGE");

    gige::ui::Feature& reading = *root.children[1].children.at(0).feature;
    EXPECT_EQ(reading.read().value, gige::ui::FeatureValue(std::int64_t{7}));
    EXPECT_FALSE(reading.read().isWritable());
    EXPECT_EQ(reading.write(std::int64_t{1}), "ACCESS_DENIED");
}

} // namespace
