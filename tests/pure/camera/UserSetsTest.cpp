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

} // namespace
} // namespace camera
