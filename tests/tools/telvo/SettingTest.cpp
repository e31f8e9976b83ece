#include "Setting.h"
#include "ToolError.h"

#include <gtest/gtest.h>
#include <set>

namespace
{

using namespace telvo;

constexpr std::int32_t kNoCamera = 1; // none is connected in these tests

/// The message of the usage error that parsing this text throws; empty: it throws none.
std::string usageError(std::string_view text)
{
    try {
        parseAssignment(text);
        return "";
    } catch (const UsageError& error) {
        return error.what();
    }
}

TEST(Setting, TakesWholeNumbers)
{
    const Assignment assignment = parseAssignment("exposure=250");
    EXPECT_EQ(assignment.setting->name, "exposure");
    EXPECT_EQ(assignment.text, "250");
    EXPECT_EQ(assignment.value, 250.0);
    EXPECT_EQ(parseAssignment("width=4294967295").value, 4294967295.0);
    EXPECT_EQ(parseAssignment("packet-timeout=0").value, 0.0);
}

TEST(Setting, RefusesWhatIsNoWholeNumber)
{
    EXPECT_EQ(usageError("black-level=1.5"), "'1.5' is no value of black-level (black level)");
    for (const char* text : {"exposure=", "exposure=-1", "exposure=12x", "exposure= 12",
                             "exposure=4294967296", "exposure=0x10"}) {
        EXPECT_NE(usageError(text), "") << text;
    }
}

TEST(Setting, TakesRealNumbersWhereTheCameraHasThem)
{
    EXPECT_EQ(parseAssignment("gain=2.5").value, 2.5);
    EXPECT_NE(usageError("gain=nan"), "");
    EXPECT_NE(usageError("gain=inf"), "");
}

TEST(Setting, TakesOnAndOff)
{
    EXPECT_EQ(parseAssignment("sync-in=on").value, 1.0);
    EXPECT_EQ(parseAssignment("sync-in=off").value, 0.0);
    EXPECT_NE(usageError("sync-in=1"), "");
}

TEST(Setting, TakesTheWordsOfAChoice)
{
    EXPECT_EQ(parseAssignment("slopes=triple").value, 2.0);
    EXPECT_EQ(parseAssignment("record-mode=single").value, 0.0);
    EXPECT_NE(usageError("record-mode=triple"), "");
    EXPECT_NE(usageError("record-mode="), "");
}

TEST(Setting, RefusesWhatIsNoAssignment)
{
    EXPECT_EQ(usageError("exposure"), "'exposure' is not NAME=VALUE, such as exposure=500");
    EXPECT_EQ(usageError("exposur=1"),
              "there is no setting 'exposur'; 'telvo get --help' lists them all");
}

TEST(Setting, HasNoNameTwice)
{
    std::set<std::string_view> names;
    for (const Setting& setting : allSettings()) {
        EXPECT_TRUE(names.insert(setting.name).second) << setting.name;
    }
    EXPECT_EQ(names.size(), allSettings().size());
}

TEST(Setting, ReadsNothingWithoutACamera)
{
    for (const Setting& setting : allSettings()) {
        EXPECT_FALSE(tryReadSetting(setting, kNoCamera)) << setting.name;
    }
    EXPECT_THROW(readSetting(findSetting("exposure"), kNoCamera), Failure);
}

TEST(Setting, WritesNothingWithoutACamera)
{
    EXPECT_FALSE(writeSetting(parseAssignment("exposure=250"), kNoCamera));
}

TEST(Setting, KnowsItsValueInAnyForm)
{
    EXPECT_TRUE(isValueOf(parseAssignment("gain=2.0"), {.value = "2"}));
    EXPECT_FALSE(isValueOf(parseAssignment("gain=2.9"), {.value = "2"}));
    EXPECT_TRUE(isValueOf(parseAssignment("sync-in=on"), {.value = "on"}));
    EXPECT_TRUE(isValueOf(parseAssignment("exposure=007"), {.value = "7"}));
}

} // namespace
