// What the camera keeps for the host: data words, colour factors, name, data rate, user sets.
#include "Accessor.h"

namespace
{

TELVO_ACCESSORS(
    OutputDataRate,
    Rows{
        {.behaviour = "SetLogsAndWrites",
         .call = [] { return set(expSetOutputDatarate, 7); },
         .answer = {0, {}},
         .calls = {"Get InternalDataRate", "InternalDataRate.IsAvailable",
                   "log -- GEN SetOutputDatarate Value: 7", "InternalDataRate.SetValue 7"}},
        {.behaviour = "SetRaisesNegativeValuesToZero",
         .call = [] { return set(expSetOutputDatarate, -3); },
         .answer = {0, {}},
         .calls = {"Get InternalDataRate", "InternalDataRate.IsAvailable",
                   "log -- GEN SetOutputDatarate Value: 0", "InternalDataRate.SetValue 0"}},
        {.behaviour = "SetCutsAtFifteen",
         .call = [] { return set(expSetOutputDatarate, 40); },
         .answer = {0, {}},
         .calls = {"Get InternalDataRate", "InternalDataRate.IsAvailable",
                   "log -- GEN SetOutputDatarate Value: 15", "InternalDataRate.SetValue 15"}},
        {.behaviour = "SetSucceedsWhenTheCameraRefuses",
         .call = [] { return set(expSetOutputDatarate, 7); },
         .answer = {0, {}},
         .calls = {"Get InternalDataRate", "InternalDataRate.IsAvailable",
                   "log -- GEN SetOutputDatarate Value: 7", "InternalDataRate.SetValue 7"},
         .script = [](StandIn& s) { s.answer("InternalDataRate.SetValue", {Code::Busy}); }},
        {.behaviour = "SetFailsWhileUnavailable",
         .call = [] { return set(expSetOutputDatarate, 7); },
         .answer = {-1, {}},
         .calls = {"Get InternalDataRate", "InternalDataRate.IsAvailable",
                   "log -- GEN SetOutputDatarate Error Not available"},
         .script = [](StandIn& s) { s.camera().integer("InternalDataRate").available(false); }},
        {.behaviour = "SetFailsWithoutTheFeature",
         .call = [] { return set(expSetOutputDatarate, 7); },
         .answer = {-1, {}},
         .calls = {"Get InternalDataRate", "log -- GEN SetOutputDatarate Error NULL"},
         .script = [](StandIn& s) { s.camera().remove("InternalDataRate"); }},
        {.behaviour = "GetReads",
         .call = [] { return get(expGetOutputDatarate); },
         .answer = {0, {3}},
         .calls = {"Get InternalDataRate", "InternalDataRate.IsAvailable",
                   "InternalDataRate.GetValue", "log -- GEN GetOutputDatarate: 3"}},
        {.behaviour = "GetGivesZeroAndSuccessWhenTheReadFails",
         .call = [] { return get(expGetOutputDatarate); },
         .answer = {0, {0}},
         .calls = {"Get InternalDataRate", "InternalDataRate.IsAvailable",
                   "InternalDataRate.GetValue", "log -- GEN GetOutputDatarate: 0"},
         .script = [](StandIn& s) { s.answer("InternalDataRate.GetValue", {Code::Timeout}); }},
        {.behaviour = "GetGivesZeroAndFailsWhileUnavailable",
         .call = [] { return get(expGetOutputDatarate); },
         .answer = {-1, {0}},
         .calls = {"Get InternalDataRate", "InternalDataRate.IsAvailable",
                   "log -- GEN GetOutputDatarate Error"},
         .script = [](StandIn& s) { s.camera().integer("InternalDataRate").available(false); }},
        {.behaviour = "GetGivesZeroAndFailsWithoutTheFeature",
         .call = [] { return get(expGetOutputDatarate); },
         .answer = {-1, {0}},
         .calls = {"Get InternalDataRate", "log -- GEN GetOutputDatarate Error"},
         .script = [](StandIn& s) { s.camera().remove("InternalDataRate"); }},
    });

TELVO_ACCESSORS(
    CustomInformation,
    Rows{
        {.behaviour = "SetLogsBeforeItWrites",
         .call = [] { return set(expSetCustomInformation, 4711); },
         .answer = {0, {}},
         .calls = {"Get Data03", "log -- GEN setCustomData Data03 4711", "Data03.SetValue 4711"}},
        {.behaviour = "SetSucceedsWhenTheCameraRefuses",
         .call = [] { return set(expSetCustomInformation, 4711); },
         .answer = {0, {}},
         .calls = {"Get Data03", "log -- GEN setCustomData Data03 4711", "Data03.SetValue 4711"},
         .script = [](StandIn& s) { s.answer("Data03.SetValue", {Code::Busy}); }},
        {.behaviour = "SetFailsWithoutTheFeature",
         .call = [] { return set(expSetCustomInformation, 4711); },
         .answer = {-1, {}},
         .calls = {"Get Data03", "log -- GEN setCustomData Error"},
         .script = [](StandIn& s) { s.camera().remove("Data03"); }},
        {.behaviour = "GetReadsAndLogsUnsigned",
         .call = [] { return get(expGetCustomInformation); },
         .answer = {0, {-2}},
         .calls = {"Get Data03", "Data03.GetValue", "log -- GEN getCustomData Data03 4294967294"},
         .script = [](StandIn& s) { s.camera().integer("Data03").value(0xFFFFFFFE); }},
        {.behaviour = "GetGivesZeroAndSuccessWhenTheReadFails",
         .call = [] { return get(expGetCustomInformation); },
         .answer = {0, {0}},
         .calls = {"Get Data03", "Data03.GetValue", "log -- GEN getCustomData Data03 0"},
         .script = [](StandIn& s) { s.answer("Data03.GetValue", {Code::Timeout}); }},
        {.behaviour = "GetFailsWithoutTheFeature",
         .call = [] { return get(expGetCustomInformation); },
         .answer = {-1, {kUntouched}},
         .calls = {"Get Data03", "log -- GEN getCustomData Error"},
         .script = [](StandIn& s) { s.camera().remove("Data03"); }},
    });

Answer setColors(double first, double second, double third)
{
    return {expSetColorInformation(first, second, third, kCamera), {}};
}

Answer getColors()
{
    std::uint8_t flag = kUntouched;
    double first = kUntouched;
    double second = kUntouched;
    double third = kUntouched;
    const std::int32_t result = expGetColorInformation(&flag, &first, &second, &third, kCamera);
    return {result, {static_cast<double>(flag), first, second, third}};
}

TELVO_ACCESSORS(
    ColorInformation,
    Rows{
        {.behaviour = "SetStoresEachFactorInItsWord",
         .call = [] { return setColors(1.0, 0.0, 5.0); },
         .answer = {0, {}},
         .calls = {"Get Data00", "log -- GEN setCustomData Data00 200", "Data00.SetValue 200",
                   "Get Data01", "log -- GEN setCustomData Data01 100", "Data01.SetValue 100",
                   "Get Data02", "log -- GEN setCustomData Data02 600", "Data02.SetValue 600"}},
        {.behaviour = "SetTruncatesTowardZero",
         .call = [] { return setColors(1.507, -0.996, 2.25); },
         .answer = {0, {}},
         .calls = {"Get Data00", "log -- GEN setCustomData Data00 250", "Data00.SetValue 250",
                   "Get Data01", "log -- GEN setCustomData Data01 0", "Data01.SetValue 0",
                   "Get Data02", "log -- GEN setCustomData Data02 325", "Data02.SetValue 325"}},
        {.behaviour = "SetDoesNotCheckTheRange",
         .call = [] { return setColors(99.0, 1.0, 1.0); },
         .answer = {0, {}},
         .calls = {"Get Data00", "log -- GEN setCustomData Data00 10000", "Data00.SetValue 10000",
                   "Get Data01", "log -- GEN setCustomData Data01 200", "Data01.SetValue 200",
                   "Get Data02", "log -- GEN setCustomData Data02 200", "Data02.SetValue 200"}},
        {.behaviour = "SetGoesOnWhenTheCameraRefuses",
         .call = [] { return setColors(1.0, 1.0, 1.0); },
         .answer = {0, {}},
         .calls = {"Get Data00", "log -- GEN setCustomData Data00 200", "Data00.SetValue 200",
                   "Get Data01", "log -- GEN setCustomData Data01 200", "Data01.SetValue 200",
                   "Get Data02", "log -- GEN setCustomData Data02 200", "Data02.SetValue 200"},
         .script =
             [](StandIn& s) {
                 s.answer("Data00.SetValue", {Code::Busy});
                 s.answer("Data01.SetValue", {Code::Busy});
                 s.answer("Data02.SetValue", {Code::Busy});
             }},
        {.behaviour = "SetGoesOnWithoutTheWords",
         .call = [] { return setColors(1.0, 1.0, 1.0); },
         .answer = {0, {}},
         .calls = {"Get Data00", "log -- GEN setCustomData Error", "Get Data01",
                   "log -- GEN setCustomData Error", "Get Data02",
                   "log -- GEN setCustomData Error"},
         .script =
             [](StandIn& s) {
                 s.camera().remove({"Data00", "Data01", "Data02"});
             }},
        {.behaviour = "GetGivesTheDefaultsOfAMonochromeCamera",
         .call = getColors,
         .answer = {0, {0, 1.0, 1.0, 1.0}},
         .calls = {}},
    });

class HostDataTest : public InitializedGrabberTest
{
};

TEST_F(HostDataTest, ColorFactorsComeBackWithoutReadingTheCamera)
{
    setColors(1.0, 0.0, 5.0);
    s.forget();
    EXPECT_EQ(getColors(), (Answer{0, {0, 1.0, 0.0, 5.0}}));
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(HostDataTest, ColorFactorsAreKeptUnrounded)
{
    setColors(1.507, 99.0, -3.0);
    EXPECT_EQ(getColors(), (Answer{0, {0, 1.507, 99.0, -3.0}}));
}

TEST_F(HostDataTest, AHugeColorFactorIsSurvived)
{
    EXPECT_EQ(setColors(1e300, 1.0, 1.0).result, 0);
}

Answer saveUserSet()
{
    return {expSaveUserSet(kCamera), {}};
}

TELVO_ACCESSORS(
    UserSet,
    Rows{
        {.behaviour = "SaveSucceedsAtTheFirstTry",
         .call = saveUserSet,
         .answer = {0, {}},
         .calls = {"UserSetSave.Execute", "log -- GEN 1. try: saveUserSet ok"}},
        {.behaviour = "SaveTriesAgainHalfASecondAfterARefusal",
         .call = saveUserSet,
         .answer = {0, {}},
         .calls = {"UserSetSave.Execute",
                   "log ------- GEN 1. try: saveUserSet Error Nr. 4, description: BUSY",
                   "Sleep 500", "UserSetSave.Execute",
                   "log ------- GEN 2. try: saveUserSet Error Nr. 2, description: TIMEOUT",
                   "Sleep 500", "UserSetSave.Execute", "log -- GEN 3. try: saveUserSet ok"},
         .script =
             [](StandIn& s) {
                 s.answer("UserSetSave.Execute", {Code::Busy, Code::Timeout});
             }},
        {.behaviour = "SaveGivesUpAfterFourRefusalsAndFourSleeps",
         .call = saveUserSet,
         .answer = {-1, {}},
         .calls = {"UserSetSave.Execute",
                   "log ------- GEN 1. try: saveUserSet Error Nr. 4, description: BUSY",
                   "Sleep 500", "UserSetSave.Execute",
                   "log ------- GEN 2. try: saveUserSet Error Nr. 4, description: BUSY",
                   "Sleep 500", "UserSetSave.Execute",
                   "log ------- GEN 3. try: saveUserSet Error Nr. 4, description: BUSY",
                   "Sleep 500", "UserSetSave.Execute",
                   "log ------- GEN 4. try: saveUserSet Error Nr. 4, description: BUSY",
                   "Sleep 500", "log -- GEN saveUserSet Error"},
         .script = [](StandIn& s) { s.answerAlways("UserSetSave.Execute", Code::Busy); }},
        {.behaviour = "SaveFailsAtOnceWithAFeatureOfAnotherType",
         .call = saveUserSet,
         .answer = {-1, {}},
         .calls = {"log -- GEN saveUserSet Error"},
         .beforeBinding = [](StandIn& s) { s.camera().boolean("UserSetSave"); }},
        {.behaviour = "SaveFailsAtOnceWithoutTheCommand",
         .call = saveUserSet,
         .answer = {-1, {}},
         .calls = {"log -- GEN saveUserSet Error"},
         .beforeBinding = [](StandIn& s) { s.camera().remove("UserSetSave"); }},
    });

} // namespace
