// The image-content trigger: its switches, and the window written and read as a whole.
#include "Accessor.h"

#include <array>

namespace
{

TELVO_ACCESSORS(
    FrameTrigger,
    join({
        rowsOf(Plain{.name = "Enable",
                     .call = [] { return set(expEnableFrameTrigger, true); },
                     .reach = Reach::LookedUp,
                     .feature = "IBEnable",
                     .access = "IBEnable.SetValue 1"}),
        rowsOf(Plain{.name = "IsEnabled",
                     .call = [] { return get(expIsFrameTriggerEnabled); },
                     .reach = Reach::LookedUp,
                     .feature = "IBEnable",
                     .access = "IBEnable.GetValue",
                     .done = "-- GEN isFrameTriggerEnabled 0",
                     .failed = "-- GEN isFrameTriggerEnabled Error",
                     .outs = {0}}),
        rowsOf(Plain{.name = "ShowWindow",
                     .call = [] { return set(expEnableTriggerWindow, true); },
                     .reach = Reach::LookedUp,
                     .feature = "IBWindowVisible",
                     .access = "IBWindowVisible.SetValue 1"}),
        rowsOf(Plain{.name = "IsInstalled",
                     .call = [] { return get(expIsImageVantoAvailable); },
                     .reach = Reach::LookedUp,
                     .feature = "ImageVANTOAvailable",
                     .access = "ImageVANTOAvailable.GetValue",
                     .outs = {0},
                     .outsOnFailure = std::vector<double>{0}}),
        {
            {.behaviour = "IsInstalledWritesAByteOf1",
             .call = [] { return get(expIsImageVantoAvailable); },
             .answer = {0, {1}},
             .calls = {"Get ImageVANTOAvailable", "ImageVANTOAvailable.GetValue"},
             .script = [](StandIn& s) { s.camera().boolean("ImageVANTOAvailable").value(true); }},
        },
    }));

Answer setWindow()
{
    return {expSetFrameTrigger(20, 10, 300, 400, 5, 60, kCamera), {}};
}

Answer getWindow()
{
    std::array<std::uint32_t, 6> outs{};
    outs.fill(kUntouched);
    const std::int32_t result =
        expGetFrameTrigger(&outs[0], &outs[1], &outs[2], &outs[3], &outs[4], &outs[5], kCamera);
    return {result, {outs.begin(), outs.end()}};
}

/// The ten writes of the window in order: look-up, write, line each.
const Texts kWindowWrites{"Get IBOffsetX",
                          "IBOffsetX.SetValue 0",
                          "log -- GEN setTriggerLeft: 0",
                          "Get IBOffsetY",
                          "IBOffsetY.SetValue 0",
                          "log -- GEN setTriggerTop: 0",
                          "Get IBWidth",
                          "IBWidth.SetValue 300",
                          "log -- GEN setTriggerWidth : 300",
                          "Get IBHeight",
                          "IBHeight.SetValue 400",
                          "log -- GEN setTriggerHeight: 400",
                          "Get IBOffsetX",
                          "IBOffsetX.SetValue 10",
                          "log -- GEN setTriggerLeft: 10",
                          "Get IBOffsetY",
                          "IBOffsetY.SetValue 20",
                          "log -- GEN setTriggerTop: 20",
                          "Get IBWidth",
                          "IBWidth.SetValue 300",
                          "log -- GEN setTriggerWidth : 300",
                          "Get IBHeight",
                          "IBHeight.SetValue 400",
                          "log -- GEN setTriggerHeight: 400",
                          "Get IBThreshold",
                          "IBThreshold.SetValue 60",
                          "log -- GEN setTriggerThreshold: 60",
                          "Get IBReleaseCondition",
                          "IBReleaseCondition.SetValue 5",
                          "log -- GEN setTriggerCondition: 5"};

/// The sequence up to and including the given write (counted from 1), which fails.
Texts windowWritesFailingAt(std::ptrdiff_t write, const std::string& errorLine)
{
    Texts calls(kWindowWrites.begin(), kWindowWrites.begin() + 3 * write - 1);
    calls.push_back("log " + errorLine);
    return calls;
}

Row windowFailsAt(std::ptrdiff_t write, const std::string& feature, const std::deque<Code>& results,
                  const std::string& errorLine)
{
    return {.behaviour = "SetStopsWhenWrite" + std::to_string(write) + "Fails",
            .call = setWindow,
            .answer = {-1, {}},
            .calls = windowWritesFailingAt(write, errorLine),
            .script = [=](StandIn& s) { s.answer(feature + ".SetValue", results); }};
}

TELVO_ACCESSORS(
    TriggerWindow,
    Rows{
        {.behaviour = "SetMakesTenWritesInOrder",
         .call = setWindow,
         .answer = {0, {}},
         .calls = kWindowWrites},
        {.behaviour = "SetIgnoresThatTheFirstTwoWritesFail",
         .call = setWindow,
         .answer = {0, {}},
         .calls =
             [] {
                 Texts calls = kWindowWrites;
                 calls[2] = "log -- GEN setTriggerLeft Error";
                 calls[5] = "log -- GEN setTriggerTop Error";
                 return calls;
             }(),
         .script =
             [](StandIn& s) {
                 s.answer("IBOffsetX.SetValue", {Code::Busy});
                 s.answer("IBOffsetY.SetValue", {Code::Busy});
             }},
        windowFailsAt(3, "IBWidth", {Code::Busy}, "-- GEN setTriggerWidth Error"),
        windowFailsAt(4, "IBHeight", {Code::Busy}, "-- GEN setTriggerHeight Error"),
        windowFailsAt(5, "IBOffsetX", {Code::Ok, Code::Busy}, "-- GEN setTriggerLeft Error"),
        windowFailsAt(6, "IBOffsetY", {Code::Ok, Code::Busy}, "-- GEN setTriggerTop Error"),
        windowFailsAt(7, "IBWidth", {Code::Ok, Code::Busy}, "-- GEN setTriggerWidth Error"),
        windowFailsAt(8, "IBHeight", {Code::Ok, Code::Busy}, "-- GEN setTriggerHeight Error"),
        windowFailsAt(9, "IBThreshold", {Code::Busy}, "-- GEN setTriggerThreshold Error"),
        windowFailsAt(10, "IBReleaseCondition", {Code::Busy}, "-- GEN setTriggerCondition Error"),
        {.behaviour = "SetFailsWithoutTheWidth",
         .call = setWindow,
         .answer = {-1, {}},
         .calls = {"Get IBOffsetX", "IBOffsetX.SetValue 0", "log -- GEN setTriggerLeft: 0",
                   "Get IBOffsetY", "IBOffsetY.SetValue 0", "log -- GEN setTriggerTop: 0",
                   "Get IBWidth", "log -- GEN setTriggerWidth Error"},
         .script = [](StandIn& s) { s.camera().remove("IBWidth"); }},
        {.behaviour = "GetReadsSixValuesIntoTheirPlaces",
         .call = getWindow,
         .answer = {0, {22, 11, 333, 444, 6, 55}},
         .calls = {"Get IBWidth", "IBWidth.GetValue", "Get IBHeight", "IBHeight.GetValue",
                   "Get IBOffsetX", "IBOffsetX.GetValue", "Get IBOffsetY", "IBOffsetY.GetValue",
                   "Get IBThreshold", "IBThreshold.GetValue", "Get IBReleaseCondition",
                   "IBReleaseCondition.GetValue"}},
        {.behaviour = "GetStopsAtTheFirstFailedRead",
         .call = getWindow,
         .answer = {-1, {kUntouched, kUntouched, 333, 444, kUntouched, kUntouched}},
         .calls = {"Get IBWidth", "IBWidth.GetValue", "Get IBHeight", "IBHeight.GetValue",
                   "Get IBOffsetX", "IBOffsetX.GetValue"},
         .script = [](StandIn& s) { s.answer("IBOffsetX.GetValue", {Code::Timeout}); }},
        {.behaviour = "GetFailsSilentlyWithoutTheReleaseCondition",
         .call = getWindow,
         .answer = {-1, {22, 11, 333, 444, kUntouched, 55}},
         .calls = {"Get IBWidth", "IBWidth.GetValue", "Get IBHeight", "IBHeight.GetValue",
                   "Get IBOffsetX", "IBOffsetX.GetValue", "Get IBOffsetY", "IBOffsetY.GetValue",
                   "Get IBThreshold", "IBThreshold.GetValue", "Get IBReleaseCondition"},
         .script = [](StandIn& s) { s.camera().remove("IBReleaseCondition"); }},
        {.behaviour = "UpdateWritesThresholdThenCondition",
         .call =
             [] {
                 return Answer{expUpdateTriggerValues(4, 99, kCamera), {}};
             },
         .answer = {0, {}},
         .calls = {"Get IBThreshold", "IBThreshold.SetValue 99",
                   "log -- GEN setTriggerThreshold: 99", "Get IBReleaseCondition",
                   "IBReleaseCondition.SetValue 4", "log -- GEN setTriggerCondition: 4"}},
        {.behaviour = "UpdateStopsWhenTheThresholdIsRefused",
         .call =
             [] {
                 return Answer{expUpdateTriggerValues(4, 99, kCamera), {}};
             },
         .answer = {-1, {}},
         .calls = {"Get IBThreshold", "IBThreshold.SetValue 99",
                   "log -- GEN setTriggerThreshold Error"},
         .script = [](StandIn& s) { s.answer("IBThreshold.SetValue", {Code::Busy}); }},
        {.behaviour = "UpdateFailsWhenTheConditionIsRefused",
         .call =
             [] {
                 return Answer{expUpdateTriggerValues(4, 99, kCamera), {}};
             },
         .answer = {-1, {}},
         .calls = {"Get IBThreshold", "IBThreshold.SetValue 99",
                   "log -- GEN setTriggerThreshold: 99", "Get IBReleaseCondition",
                   "IBReleaseCondition.SetValue 4", "log -- GEN setTriggerCondition Error"},
         .script = [](StandIn& s) { s.answer("IBReleaseCondition.SetValue", {Code::Busy}); }},
    });

class TriggerWindowTest : public InitializedGrabberTest
{
};

TEST_F(TriggerWindowTest, StaysPartlyChangedWhenTheWidthIsRefused)
{
    s.answer("IBWidth.SetValue", {Code::Busy});
    EXPECT_EQ(setWindow().result, -1);
    EXPECT_EQ(getWindow(), (Answer{0, {0, 0, 333, 444, 6, 55}}));
}

} // namespace
