#include "SettingRows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace telvo;

Json rowFor(const char* name, const SettingText& text)
{
    return rowOf(findSetting(name), text, {.width = 1280, .height = 1024});
}

TEST(SettingRows, TellLimitsInNumbers)
{
    const Json row = rowFor("exposure", {"250", "1 to 19999 us, in steps of 4", "us"});
    EXPECT_EQ(row["value"], 250);
    EXPECT_EQ(row["unit"], "us");
    EXPECT_EQ(row["minimum"], 1);
    EXPECT_EQ(row["maximum"], 19999);
    EXPECT_EQ(row["step"], 4);
    EXPECT_EQ(row["kind"], "number");
    EXPECT_EQ(row["group"], "Timing");
    EXPECT_EQ(row["readOnly"], false);
    EXPECT_EQ(row["lasts"], "always");
}

TEST(SettingRows, BoundThePicturesPlaceByTheSensor)
{
    const Json width = rowFor("width", {"640", "in steps of 16", "px"});
    EXPECT_EQ(width["minimum"], 16);
    EXPECT_EQ(width["maximum"], 1280);
    const Json top = rowFor("offset-y", {"0", "in steps of 4", "px"});
    EXPECT_EQ(top["minimum"], 0);
    EXPECT_EQ(top["maximum"], 1020);
    EXPECT_EQ(top["step"], 4);
}

TEST(SettingRows, InventNoLimits)
{
    const Json row = rowOf(findSetting("width"), {"640", "", ""}, {});
    EXPECT_FALSE(row.contains("minimum"));
    EXPECT_FALSE(row.contains("maximum"));
    EXPECT_FALSE(row.contains("step"));
}

TEST(SettingRows, NameTheChoicesThereAre)
{
    EXPECT_EQ(rowFor("record-mode", {"single"})["choices"], (Json{"single", "continuous"}));
    EXPECT_EQ(rowFor("slopes", {"normal"})["choices"].size(), 3U);
    const Json sequences = rowFor("record-sequences", {"4"});
    EXPECT_EQ(sequences["kind"], "choice");
    EXPECT_EQ(sequences["value"], "4"); // as it stands among them
}

TEST(SettingRows, TellSwitchesAndWhatCannotBeChanged)
{
    const Json row = rowFor("sync-in", {"on"});
    EXPECT_EQ(row["kind"], "switch");
    EXPECT_EQ(row["value"], true);
    EXPECT_EQ(rowFor("packet-delay", {"2000"})["readOnly"], true);
    EXPECT_EQ(rowFor("packet-delay", {"2000"})["group"], "Link");
    EXPECT_EQ(rowFor("packet-delay", {"2000"})["lasts"], "connection");
    EXPECT_EQ(rowFor("record-standby", {"off"})["lasts"], "next connection");
}

TEST(SettingRows, PutEverySettingIntoAGroup)
{
    for (const Setting& setting : allSettings()) {
        const std::string group = rowOf(setting, {"1"}, {})["group"];
        EXPECT_EQ(group == "Other", setting.name == "custom-data") << setting.name;
    }
}

} // namespace
