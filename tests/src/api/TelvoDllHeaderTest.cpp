// The public header serves C11 as it serves C++20.
#include "CallsFromC.h"
#include "GrabberTest.h"

namespace
{

using HeaderTest = GrabberTest;

TEST_F(HeaderTest, ACProgramCallsTheLibrary)
{
    s.camera().integer("Width").value(640);
    EXPECT_EQ(readWidthFromC(kMac, kIp, 5), 640);
    EXPECT_EQ(expDisconnectGrabber(5), -1); // the C program did
}

TEST_F(HeaderTest, TheSettingsBlockIsTheSameInC)
{
    EXPECT_EQ(offsetOfOutputDataRateInC(), 56U);
    EXPECT_EQ(sizeof(TelvoConnectionSettings), 64U);
}

TEST_F(HeaderTest, NoExportThrows)
{
    EXPECT_TRUE(noexcept(expConnectGrabber(nullptr, nullptr, 0, nullptr, 0)));
    EXPECT_TRUE(noexcept(expGetRecordedFrameBlockResult(nullptr, nullptr, nullptr, 0)));
}

} // namespace
