#include "UserSets.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace camera
{
namespace
{

class StoredStateTest : public testing::Test
{
  protected:
    void TearDown() override { std::filesystem::remove(mPath); }

    const std::string mPath =
        testing::TempDir() + testing::UnitTest::GetInstance()->current_test_info()->name();
};

TEST_F(StoredStateTest, ComesBackAsItWasSaved)
{
    const StoredState state{.userSet1 = {{FeatureId::Width, 640}, {FeatureId::GainRaw, 3}},
                            .settings = {{FeatureId::Data03, 77}},
                            .userName = "left = right"};
    ASSERT_TRUE(saveState(mPath, state));
    EXPECT_EQ(loadState(mPath), state);
}

TEST_F(StoredStateTest, KeepsToTheNameOfItsFileWhateverItsLetters)
{
    const std::string name = testing::TempDir() + "K\xC3\xBC.telvo-state";
    ASSERT_TRUE(saveState(name, {.userName = "left"}));
    EXPECT_EQ(loadState(name).userName, "left");
    EXPECT_TRUE(std::filesystem::remove(std::filesystem::path(testing::TempDir()) /
                                        u8"K\u00FC.telvo-state"));
}

TEST_F(StoredStateTest, IsEmptyWithoutAFile)
{
    EXPECT_EQ(loadState(mPath), StoredState{});
}

TEST_F(StoredStateTest, SkipsWhatItDoesNotKnow)
{
    std::ofstream(mPath)
        << "nonsense\nData00=x\nFoo=1\nWidth=3\nUserSet1.CameraState=2\nData01=5\n";
    EXPECT_EQ(loadState(mPath), (StoredState{.settings = {{FeatureId::Data01, 5}}}));
}

TEST_F(StoredStateTest, SaysWhenItCannotBeWritten)
{
    EXPECT_FALSE(saveState(mPath + "/no/such/folder", {}));
}

TEST(UserSets, HaveNoFirstSetUntilItIsSaved)
{
    const CameraOptions options;
    Settings settings(options);
    UserSets sets(options, settings);
    EXPECT_EQ(sets.find(kUserSet1), nullptr);
    settings.set(FeatureId::GainRaw, 7);
    ASSERT_TRUE(sets.save(settings));
    ASSERT_NE(sets.find(kUserSet1), nullptr);
    EXPECT_EQ(sets.find(kUserSet1)->at(FeatureId::GainRaw), 7);
    EXPECT_EQ(sets.find(kUserSetDefault)->at(FeatureId::GainRaw), 0);
    EXPECT_FALSE(sets.find(kUserSet1)->contains(FeatureId::Data00));
}

TEST_F(StoredStateTest, ComesBackWhenTheCameraIsSwitchedOnAgain)
{
    const CameraOptions options{.userName = "first", .stateFile = mPath};
    {
        Settings settings(options);
        UserSets sets(options, settings);
        settings.take({{FeatureId::Data02, 5},
                       {FeatureId::GainRaw, 7},
                       {FeatureId::UserSetDefaultSelector, kUserSet1}});
        ASSERT_TRUE(sets.save(settings));
        sets.setUserName("second", settings);
    }
    Settings settings(options);
    const UserSets sets(options, settings);
    sets.restore(settings);
    EXPECT_EQ(sets.userName(), "second");
    EXPECT_EQ(settings.get(FeatureId::Data02), 5);
    EXPECT_EQ(settings.get(FeatureId::GainRaw), 7);
    EXPECT_EQ(settings.get(FeatureId::UserSetSelector), kUserSet1);
}

} // namespace
} // namespace camera
