// Initialise prepares a camera whose user sets are not as the library needs them, and says so.
#include "GrabberTest.h"

#include <algorithm>

namespace
{

class UserSetCheckTest : public GrabberTest
{
  protected:
    void SetUp() override { ASSERT_EQ(connect(), 0); }

    /// Initialises and gives the calls from the check on; they are the last ones when it fails.
    Texts initializeAndTakeCheck(std::int32_t expectedResult)
    {
        s.forget();
        EXPECT_EQ(initialize(), expectedResult);
        const Texts calls = s.takeCallsWithoutLookups();
        return {std::find(calls.begin(), calls.end(), "log -- GEN getMaxHeight 1024"), calls.end()};
    }
};

const Texts kFullFrame{
    "DecimationXY.IsAvailable",
    "DecimationXY.SetValue 0",
    "log -- GEN enableDecimationMode 0",
    "Sleep 300",
    "OffsetX.GetMin",
    "OffsetX.GetMax",
    "OffsetX.SetValue 0",
    "log -- GEN setOffsetX 0",
    "OffsetY.GetMin",
    "OffsetY.GetMax",
    "OffsetY.SetValue 0",
    "log -- GEN setOffsetY 0",
    "Width.GetMin",
    "Width.GetMax",
    "log <--------------- GEN setCurrentWidth: min = 16, max = 1280, value = 1280",
    "Width.SetValue 1280",
    "log -- GEN setCurrentWidth 1280",
    "Height.GetMin",
    "Height.GetMax",
    "Height.SetValue 1024",
    "log -- GEN setCurrentHeight 1024"};

const Texts kSaves{"UserSetSave.Execute", "log -- GEN 1. try: saveUserSet ok", "Sleep 100"};

TEST_F(UserSetCheckTest, PreparesACameraWithTheDefaultSetSelected)
{
    s.camera().enumeration("UserSetSelector").value("Default");
    EXPECT_EQ(
        initializeAndTakeCheck(-2),
        (Texts{"log -- GEN getMaxHeight 1024", "UserSetSelector.GetValue",
               "log -- getUserSetSelection: Default", "UserSetDefaultSelector.GetValue",
               "log -- getUserSetDefaultSelection: UserSet1",
               "log UserSetSelectionState: 0 UserSetDefaultSelectionState: 1",
               "UserSetDefaultSelector.SetValue Default", "UserSetSelector.SetValue UserSet1"} +
         kFullFrame + kSaves + Texts{"UserSetDefaultSelector.SetValue UserSet1"}));
}

TEST_F(UserSetCheckTest, LeavesTheDefaultAloneAtFirstWhenTheUserSetIsSelected)
{
    s.camera().enumeration("UserSetDefaultSelector").value("Default");
    EXPECT_EQ(initializeAndTakeCheck(-2),
              (Texts{"log -- GEN getMaxHeight 1024", "UserSetSelector.GetValue",
                     "log -- getUserSetSelection: UserSet1", "UserSetDefaultSelector.GetValue",
                     "log -- getUserSetDefaultSelection: Default",
                     "log UserSetSelectionState: 1 UserSetDefaultSelectionState: 0",
                     "UserSetSelector.SetValue UserSet1"} +
               kFullFrame + kSaves + Texts{"UserSetDefaultSelector.SetValue UserSet1"}));
}

TEST_F(UserSetCheckTest, PassesAtTheNextConnection)
{
    s.camera().enumeration("UserSetSelector").value("Default");
    s.camera().enumeration("UserSetDefaultSelector").value("Default");
    EXPECT_EQ(initialize(), -2);
    expDisconnectGrabber(kCamera);
    ASSERT_EQ(connect(), 0);
    EXPECT_EQ(initialize(), 0);
}

TEST_F(UserSetCheckTest, CountsFailedReadsAsOtherSelections)
{
    s.answer("UserSetSelector.GetValue", {Code::Timeout});
    s.answer("UserSetDefaultSelector.GetValue", {Code::Timeout});
    EXPECT_EQ(
        initializeAndTakeCheck(-2),
        (Texts{"log -- GEN getMaxHeight 1024", "UserSetSelector.GetValue",
               "UserSetDefaultSelector.GetValue",
               "log UserSetSelectionState: 0 UserSetDefaultSelectionState: 0",
               "UserSetDefaultSelector.SetValue Default", "UserSetSelector.SetValue UserSet1"} +
         kFullFrame + kSaves + Texts{"UserSetDefaultSelector.SetValue UserSet1"}));
}

TEST_F(UserSetCheckTest, GoesOnThroughEveryFailure)
{
    s.camera().enumeration("UserSetSelector").value("Default");
    for (const char* call :
         {"UserSetDefaultSelector.SetValue", "UserSetSelector.SetValue", "DecimationXY.SetValue",
          "OffsetX.SetValue", "OffsetY.SetValue", "Width.SetValue", "Height.SetValue"}) {
        s.answerAlways(call, Code::Busy);
    }
    EXPECT_EQ(initializeAndTakeCheck(-2),
              (Texts{"log -- GEN getMaxHeight 1024",
                     "UserSetSelector.GetValue",
                     "log -- getUserSetSelection: Default",
                     "UserSetDefaultSelector.GetValue",
                     "log -- getUserSetDefaultSelection: UserSet1",
                     "log UserSetSelectionState: 0 UserSetDefaultSelectionState: 1",
                     "UserSetDefaultSelector.SetValue Default",
                     "log Error Setting UserDefaultSelection",
                     "UserSetSelector.SetValue UserSet1",
                     "log Error Setting UserSelection",
                     "DecimationXY.IsAvailable",
                     "DecimationXY.SetValue 0",
                     "log -- GEN enableDecimationMode Error",
                     "Sleep 300",
                     "OffsetX.GetMin",
                     "OffsetX.GetMax",
                     "OffsetX.SetValue 0",
                     "log -- GEN setOffsetX Error",
                     "OffsetY.GetMin",
                     "OffsetY.GetMax",
                     "OffsetY.SetValue 0",
                     "log -- GEN setOffsetY Error",
                     "Width.GetMin",
                     "Width.GetMax",
                     "log <--------------- GEN setCurrentWidth: min = 16, max = 1280, value = 1280",
                     "Width.SetValue 1280",
                     "log -- GEN setCurrentWidth Error",
                     "Height.GetMin",
                     "Height.GetMax",
                     "Height.SetValue 1024",
                     "log -- GEN setCurrentHeight Error",
                     "UserSetSave.Execute",
                     "log -- GEN 1. try: saveUserSet ok",
                     "Sleep 100",
                     "UserSetDefaultSelector.SetValue UserSet1",
                     "log Error Setting UserDefaultSelection"}));
}

TEST_F(UserSetCheckTest, LogsMissingSelectorsAsFailuresToSetThem)
{
    s.camera().remove({"UserSetSelector", "UserSetDefaultSelector"});
    EXPECT_EQ(initializeAndTakeCheck(-2),
              (Texts{"log -- GEN getMaxHeight 1024",
                     "log UserSetSelectionState: 0 UserSetDefaultSelectionState: 0",
                     "log Error Setting UserDefaultSelection", "log Error Setting UserSelection"} +
               kFullFrame + kSaves + Texts{"log Error Setting UserDefaultSelection"}));
}

TEST_F(UserSetCheckTest, FailsAfterSettingsHandlesAndIdentityAreInPlace)
{
    s.camera().enumeration("UserSetSelector").value("Default");
    EXPECT_EQ(initialize(), -2);
    char text[50];
    const std::uint32_t size = sizeof text;
    EXPECT_EQ(expGetParam("model", text, &size, kCamera), 0);
    EXPECT_STREQ(text, "Quor7");
    EXPECT_EQ(expSetExposureTime(640, kCamera), 0);
}

} // namespace
