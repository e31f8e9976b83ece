// The public header serves C11 as it serves C++20.
#include "CallsFromC.h"
#include "GrabberTest.h"

#include <string>

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

TEST_F(HeaderTest, ItsVersionIsItsNumbers)
{
    EXPECT_EQ(std::string(TELVO_VERSION), std::to_string(TELVO_VERSION_MAJOR) + "." +
                                              std::to_string(TELVO_VERSION_MINOR) + "." +
                                              std::to_string(TELVO_VERSION_PATCH));
}

constexpr std::uint8_t kFrame[TELVO_FRAME_HEADER_SIZE] = {
    0xAA, 0xAA, 0xAA, 0xAA, 0x34, 0x12, 0xAA, 0x0F, 1, 2, 3, 4, 5, 6, 0xF7, 9};

TEST_F(HeaderTest, AFramesHeaderIsReadAsTheFunctionsGiveIt)
{
    const TelvoFrameHeader header = telvoFrameHeader(kFrame);
    EXPECT_EQ(header.counter, 0x1234);
    EXPECT_EQ(header.flags, 0xF0);
    EXPECT_EQ(header.time, 0x00F7'0605'0403'0201U);
    EXPECT_EQ(header.extra, 9);
}

TEST_F(HeaderTest, AFramesHeaderIsTheSameInC)
{
    EXPECT_EQ(frameCounterInC(kFrame), 0x1234);
}

TEST_F(HeaderTest, NoExportThrows)
{
    EXPECT_TRUE(noexcept(expConnectGrabber(nullptr, nullptr, 0, nullptr, 0)));
    EXPECT_TRUE(noexcept(expGetRecordedFrameBlockResult(nullptr, nullptr, nullptr, 0)));
}

} // namespace
