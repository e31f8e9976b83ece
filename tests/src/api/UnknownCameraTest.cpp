// What every export does for an id that no camera has: nothing.
#include "AnyExport.h"
#include "GrabberTest.h"

#include <set>

namespace
{

constexpr std::int32_t kUnknown = 99;

class UnknownCameraTest : public GrabberTest, public ::testing::WithParamInterface<AnyExport>
{
  protected:
    void expectFailure()
    {
        s.forget();
        const Attempt attempt = GetParam().call(kUnknown, std::nullopt);
        EXPECT_EQ(attempt.result, GetParam().failure);
        EXPECT_FALSE(attempt.touchedMemory);
        EXPECT_EQ(s.takeCalls(), Texts{});
        EXPECT_EQ(s.takeQueries(), Texts{});
    }
};

std::string exportName(const ::testing::TestParamInfo<AnyExport>& info)
{
    return info.param.name;
}

TEST_P(UnknownCameraTest, FailsSilentlyWhileAnotherCameraIsConnected)
{
    ASSERT_EQ(connect(kCamera), 0);
    expectFailure();
}

TEST_P(UnknownCameraTest, FailsSilentlyOnceTheCameraIsDisconnected)
{
    ASSERT_EQ(connect(kUnknown), 0);
    ASSERT_EQ(expDisconnectGrabber(kUnknown), 0);
    expectFailure();
}

INSTANTIATE_TEST_SUITE_P(Export, UnknownCameraTest, ::testing::ValuesIn(exportsWithKnownId()),
                         exportName);

TEST(Exports, Are118WithTheOneThatConnects)
{
    std::set<std::string> names{"expConnectGrabber"};
    for (const AnyExport& row : exportsWithKnownId()) {
        names.insert(row.name);
    }
    EXPECT_EQ(names.size(), 118U);
}

} // namespace
