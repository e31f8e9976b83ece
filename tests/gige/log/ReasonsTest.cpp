// Those of them that depend on something; what each says stands in the tests of who says it.
#include "Reasons.h"

#include <gtest/gtest.h>

namespace
{

using namespace gige;

TEST(Reasons, NameTheHostThatHasTheCameraWhereItIsKnown)
{
    EXPECT_EQ(log::controlledBy("").text.view(), "the camera is controlled by another program");
    EXPECT_EQ(log::controlledBy("10.0.0.5, port 50123").text.view(),
              "the camera is controlled by a program on 10.0.0.5, port 50123");
    EXPECT_EQ(
        log::controlTaken("10.0.0.5, port 50123").text.view(),
        "the link is lost: the camera is controlled by a program on 10.0.0.5, port 50123 now");
}

TEST(Reasons, TellWhereInThePictureMostPacketsGetLost)
{
    EXPECT_EQ(log::lossPlace({4, 3, 0, 0, 1, 0, 0, 1, 1, 0}).text.view(),
              "most of them at the start of a picture");
    EXPECT_EQ(log::lossPlace({1, 1, 0, 0, 1, 0, 0, 0, 0, 7}).text.view(),
              "most of them at the end of a picture");
    EXPECT_EQ(log::lossPlace({1, 1, 1, 1, 1, 1, 1, 1, 1, 1}).text.view(),
              "spread over the pictures");
    EXPECT_EQ(log::lossPlace({1, 1, 1, 1, 1, 1, 1, 1, 1, 1}).advice.view(),
              "look at cable, plugs and switch");
}

TEST(Reasons, NameTheSettingThatGrantsAGreaterBuffer)
{
    const log::Reason reason = log::smallBuffer(std::size_t{208} << 10, std::size_t{32} << 20);
    EXPECT_EQ(reason.text.view(), "the receive buffer has 208 KiB, 32768 were asked for");
    EXPECT_EQ(reason.advice.view(), "sysctl -w net.core.rmem_max=33554432");
}

TEST(Reasons, AskForWhatIsNotThereYetToMakeReceivingLessWork)
{
    EXPECT_EQ(log::slowProcessor(0.974, 1500, false).text.view(),
              "the processor is too slow for this rate: receiving took 97 % of a core");
    EXPECT_EQ(
        log::lessWork(1500, false).view(),
        "lower the frame rate or let larger packets through (jumbo frames); on Linux the right "
        "CAP_NET_RAW makes single packets less work");
    EXPECT_EQ(log::lessWork(9000, true).view(), "lower the frame rate");
}

} // namespace
