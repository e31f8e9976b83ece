// Recording mode, sequences, counts, and what the camera can do on its own.
#include "Accessor.h"

namespace
{

Row writesEntry(const std::string& feature, std::int32_t (*function)(std::uint32_t, std::int32_t),
                std::int32_t value, const std::string& entry, const Texts& log = {})
{
    Texts calls{"Get " + feature, feature + ".SetValue " + entry};
    calls.insert(calls.end(), log.begin(), log.end());
    return {.behaviour = "Writes" + std::to_string(value) + "As" + entry,
            .call = [=] { return set(function, value); },
            .answer = {0, {}},
            .calls = calls};
}

Row readsEntry(const std::string& feature, std::int32_t (*function)(std::uint32_t*, std::int32_t),
               const std::string& entry, std::int32_t out, const Texts& calls)
{
    return {.behaviour = "Reads" + entry + "As" + std::to_string(out),
            .call = [=] { return get(function); },
            .answer = {0, {static_cast<double>(out)}},
            .calls = calls,
            .script = [=](StandIn& s) { s.camera().enumeration(feature).value(entry); }};
}

const Texts kReadsRecordMode{"Get RecordMode", "RecordMode.GetValue"};

TELVO_ACCESSORS(RecordMode,
                Rows{
                    writesEntry("RecordMode", expSetRecordMode, 0, "Single"),
                    writesEntry("RecordMode", expSetRecordMode, 1, "Continuous"),
                    {.behaviour = "SendsAnEmptyNameForAnyOtherNumber",
                     .call = [] { return set(expSetRecordMode, 2); },
                     .answer = {-1, {}},
                     .calls = {"Get RecordMode", "RecordMode.SetValue"}},
                    {.behaviour = "WriteFailsWithoutTheFeature",
                     .call = [] { return set(expSetRecordMode, 0); },
                     .answer = {-1, {}},
                     .calls = {"Get RecordMode"},
                     .script = [](StandIn& s) { s.camera().remove("RecordMode"); }},
                    readsEntry("RecordMode", expGetRecordMode, "Single", 0, kReadsRecordMode),
                    readsEntry("RecordMode", expGetRecordMode, "Continuous", 1, kReadsRecordMode),
                    readsEntry("RecordMode", expGetRecordMode, "Other", kUntouched,
                               kReadsRecordMode),
                    {.behaviour = "ReadFailsWhenTheCameraRefuses",
                     .call = [] { return get(expGetRecordMode); },
                     .answer = {-1, {kUntouched}},
                     .calls = kReadsRecordMode,
                     .script = [](StandIn& s) { s.answer("RecordMode.GetValue", {Code::Busy}); }},
                    {.behaviour = "ReadFailsWithoutTheFeature",
                     .call = [] { return get(expGetRecordMode); },
                     .answer = {-1, {kUntouched}},
                     .calls = {"Get RecordMode"},
                     .script = [](StandIn& s) { s.camera().remove("RecordMode"); }},
                });

Row writesSequences(std::int32_t count, const std::string& entry)
{
    return writesEntry("RecordNumberOfSequences", expSetNumberOfRecordSequences, count, entry,
                       {"log -- GEN setNumberOfRecordSequences " + std::to_string(count)});
}

Row readsSequences(const std::string& entry, std::int32_t count)
{
    return readsEntry("RecordNumberOfSequences", expGetNumberOfRecordSequences, entry, count,
                      {"Get RecordNumberOfSequences", "RecordNumberOfSequences.IsAvailable",
                       "RecordNumberOfSequences.GetValue",
                       "log -- GEN getNumberOfRecordSequences " + std::to_string(count)});
}

TELVO_ACCESSORS(
    RecordSequences,
    Rows{
        writesSequences(1, "One"),
        writesSequences(2, "Two"),
        writesSequences(4, "Four"),
        writesSequences(8, "Eight"),
        writesSequences(16, "Sixteen"),
        {.behaviour = "SendsAnEmptyNameForAnyOtherNumber",
         .call = [] { return set(expSetNumberOfRecordSequences, 3); },
         .answer = {-1, {}},
         .calls = {"Get RecordNumberOfSequences", "RecordNumberOfSequences.SetValue",
                   "log -- GEN setNumberOfRecordSequences Error"}},
        {.behaviour = "WriteFailsWithoutTheFeature",
         .call = [] { return set(expSetNumberOfRecordSequences, 4); },
         .answer = {-1, {}},
         .calls = {"Get RecordNumberOfSequences", "log -- GEN setNumberOfRecordSequences Error"},
         .script = [](StandIn& s) { s.camera().remove("RecordNumberOfSequences"); }},
        readsSequences("One", 1),
        readsSequences("Two", 2),
        readsSequences("Four", 4),
        readsSequences("Eight", 8),
        readsSequences("Sixteen", 16),
        readsSequences("Other", 1),
        {.behaviour = "ReadGivesMinus2SilentlyWhileUnavailable",
         .call = [] { return get(expGetNumberOfRecordSequences); },
         .answer = {-2, {1}},
         .calls = {"Get RecordNumberOfSequences", "RecordNumberOfSequences.IsAvailable"},
         .script =
             [](StandIn& s) {
                 s.camera().enumeration("RecordNumberOfSequences").available(false);
             }},
        {.behaviour = "ReadFailsWithOneWhenTheCameraRefuses",
         .call = [] { return get(expGetNumberOfRecordSequences); },
         .answer = {-1, {1}},
         .calls = {"Get RecordNumberOfSequences", "RecordNumberOfSequences.IsAvailable",
                   "RecordNumberOfSequences.GetValue",
                   "log -- GEN getNumberOfRecordSequences Error"},
         .script =
             [](StandIn& s) { s.answer("RecordNumberOfSequences.GetValue", {Code::Timeout}); }},
        {.behaviour = "ReadFailsWithOneWithoutTheFeature",
         .call = [] { return get(expGetNumberOfRecordSequences); },
         .answer = {-1, {1}},
         .calls = {"Get RecordNumberOfSequences", "log -- GEN getNumberOfRecordSequences Error"},
         .script = [](StandIn& s) { s.camera().remove("RecordNumberOfSequences"); }},
    });

TELVO_ACCESSORS(
    RecordedFrames,
    join({
        rowsOf(Plain{.name = "CountAll",
                     .call = [] { return get(expGetNumberOfAllRecordedFrames); },
                     .reach = Reach::Bound,
                     .feature = "RecordNumberOfFrames",
                     .access = "RecordNumberOfFrames.GetValue",
                     .done = "-- GEN getNumberOfAllRecordedFrames 0",
                     .failed = "-- GEN getNumberOfAllRecordedFrames Error",
                     .outs = {0},
                     .outsOnFailure = std::vector<double>{0}}),
        rowsOf(Plain{.name = "CountInSequence",
                     .call = [] { return get(expGetCurrentNumberOfFramesInSequence); },
                     .reach = Reach::Bound,
                     .feature = "RecordNumberOfFramesPerSequence",
                     .access = "RecordNumberOfFramesPerSequence.GetValue",
                     .done = "-- GEN getNumberOfRecordedFramesPerSequence 0",
                     .failed = "-- GEN getNumberOfRecordedFramesPerSequence Error",
                     .outs = {0}}),
        {
            {.behaviour = "CountAllGivesTheNumberRead",
             .call = [] { return get(expGetNumberOfAllRecordedFrames); },
             .answer = {0, {12345}},
             .calls = {"RecordNumberOfFrames.GetValue",
                       "log -- GEN getNumberOfAllRecordedFrames 12345"},
             .script = [](StandIn& s) { s.camera().integer("RecordNumberOfFrames").value(12345); }},
            {.behaviour = "CountAllGivesZeroSilentlyWhenNotConnected",
             .call = [] { return get(expGetNumberOfAllRecordedFrames); },
             .answer = {0, {0}},
             .calls = {},
             .script =
                 [](StandIn& s) {
                     s.camera().integer("RecordNumberOfFrames").value(12345);
                     s.dropConnection();
                 }},
        },
    }));

Row lastDimensions(const std::string& behaviour, double width, double height, const Texts& calls,
                   const std::function<void(StandIn&)>& script)
{
    return {.behaviour = behaviour,
            .call = [] { return get(expGetLastRecordDimensions); },
            .answer = {0, {width, height}},
            .calls = calls,
            .script = script};
}

const Texts kReadsBothDimensions{"Get RecordLastRecWidth", "Get RecordLastRecHeight",
                                 "RecordLastRecWidth.GetValue", "RecordLastRecHeight.GetValue"};

TELVO_ACCESSORS(
    LastRecordDimensions,
    Rows{
        lastDimensions("GetReadsBoth", 640, 480,
                       kReadsBothDimensions +
                           Texts{"log LastRecordDimensions Width 640 Height 480"},
                       {}),
        lastDimensions("GetGivesZeroForAFailedWidth", 0, 480,
                       kReadsBothDimensions + Texts{"log LastRecordDimensions Width 0 Height 480"},
                       [](StandIn& s) {
                           s.answer("RecordLastRecWidth.GetValue", {Code::Timeout});
                       }),
        lastDimensions("GetGivesZeroForAFailedHeight", 640, 0,
                       kReadsBothDimensions + Texts{"log LastRecordDimensions Width 640 Height 0"},
                       [](StandIn& s) {
                           s.answer("RecordLastRecHeight.GetValue", {Code::Timeout});
                       }),
        lastDimensions("GetGivesZerosWithoutTheWidth", 0, 0,
                       {"Get RecordLastRecWidth", "Get RecordLastRecHeight",
                        "log LastRecordDimensions Width 0 Height 0"},
                       [](StandIn& s) { s.camera().remove("RecordLastRecWidth"); }),
        lastDimensions("GetGivesZerosWithoutTheHeight", 0, 0,
                       {"Get RecordLastRecWidth", "Get RecordLastRecHeight",
                        "log LastRecordDimensions Width 0 Height 0"},
                       [](StandIn& s) { s.camera().remove("RecordLastRecHeight"); }),
    });

TELVO_ACCESSORS(
    RecordAtPowerOn,
    join({
        rowsOf(Plain{.name = "Enable",
                     .call = [] { return set(expSetRecordAtPowerState, true); },
                     .reach = Reach::LookedUp,
                     .feature = "RecordStartAtPowerOn",
                     .access = "RecordStartAtPowerOn.SetValue 1",
                     .done = "-- GEN setRecordAtPowerOnState true",
                     .failed = "-- GEN setRecordAtPowerOnState Error",
                     .missing = "-- GEN setRecordAtPowerOnState = null"}),
        {
            {.behaviour = "Disable",
             .call = [] { return set(expSetRecordAtPowerState, false); },
             .answer = {0, {}},
             .calls = {"Get RecordStartAtPowerOn", "RecordStartAtPowerOn.SetValue 0",
                       "log -- GEN setRecordAtPowerOnState false"}},
            {.behaviour = "GetReadsFalse",
             .call = [] { return get(expGetRecordAtPowerState); },
             .answer = {0, {0}},
             .calls = {"Get RecordStartAtPowerOn", "RecordStartAtPowerOn.GetValue",
                       "log -- GEN getRecordAtPowerOnState false"}},
            {.behaviour = "GetReadsTrue",
             .call = [] { return get(expGetRecordAtPowerState); },
             .answer = {0, {1}},
             .calls = {"Get RecordStartAtPowerOn", "RecordStartAtPowerOn.GetValue",
                       "log -- GEN getRecordAtPowerOnState true"},
             .script = [](StandIn& s) { s.camera().boolean("RecordStartAtPowerOn").value(true); }},
            {.behaviour = "GetGivesZeroAndFailsWithoutTheFeature",
             .call = [] { return get(expGetRecordAtPowerState); },
             .answer = {-1, {0}},
             .calls = {"Get RecordStartAtPowerOn", "log -- GEN getRecordAtPowerOnState = null"},
             .script = [](StandIn& s) { s.camera().remove("RecordStartAtPowerOn"); }},
            {.behaviour = "IsAvailableGivesTheAvailability",
             .call = [] { return get(expIsRecordAtPowerOnAvailable); },
             .answer = {0, {1}},
             .calls = {"Get RecordStartAtPowerOn", "RecordStartAtPowerOn.IsAvailable",
                       "log -- GEN isRecordAtPowerOnAvailable true"}},
            {.behaviour = "IsAvailableGivesZeroWhileUnavailable",
             .call = [] { return get(expIsRecordAtPowerOnAvailable); },
             .answer = {0, {0}},
             .calls = {"Get RecordStartAtPowerOn", "RecordStartAtPowerOn.IsAvailable",
                       "log -- GEN isRecordAtPowerOnAvailable false"},
             .script =
                 [](StandIn& s) { s.camera().boolean("RecordStartAtPowerOn").available(false); }},
            {.behaviour = "IsAvailableGivesZeroAndFailsWithoutTheFeature",
             .call = [] { return get(expIsRecordAtPowerOnAvailable); },
             .answer = {-1, {0}},
             .calls = {"Get RecordStartAtPowerOn", "log -- GEN isRecordAtPowerOnAvailable = null"},
             .script = [](StandIn& s) { s.camera().remove("RecordStartAtPowerOn"); }},
        },
    }));

class RecordAtPowerOnTest : public InitializedGrabberTest
{
};

TEST_F(RecordAtPowerOnTest, GetFailsWhenTheReadFails)
{
    s.answer("RecordStartAtPowerOn.GetValue", {Code::Timeout});
    EXPECT_EQ(get(expGetRecordAtPowerState).result, -1);
}

TELVO_ACCESSORS(
    Irigb, join({
               rowsOf(Plain{.name = "IsAvailable",
                            .call = [] { return get(expIsIRIGBAvailable); },
                            .reach = Reach::LookedUp,
                            .feature = "IRIGBAvailable",
                            .access = "IRIGBAvailable.GetValue",
                            .done = "-- GEN isIRIGBAvailable false",
                            .failed = "-- GEN isIRIGBAvailable null",
                            .outs = {0},
                            .outsOnFailure = std::vector<double>{0}}),
               rowsOf(Plain{.name = "Set",
                            .call = [] { return set(expSetIRIGBState, true); },
                            .reach = Reach::LookedUp,
                            .feature = "IRIGBEnable",
                            .access = "IRIGBEnable.SetValue 1"}),
               rowsOf(Plain{.name = "Get",
                            .call = [] { return get(expGetIRIGBState); },
                            .reach = Reach::LookedUp,
                            .feature = "IRIGBEnable",
                            .access = "IRIGBEnable.GetValue",
                            .outs = {0}}),
               {
                   {.behaviour = "IsAvailableReadsTrue",
                    .call = [] { return get(expIsIRIGBAvailable); },
                    .answer = {0, {1}},
                    .calls = {"Get IRIGBAvailable", "IRIGBAvailable.GetValue",
                              "log -- GEN isIRIGBAvailable true"},
                    .script = [](StandIn& s) { s.camera().boolean("IRIGBAvailable").value(true); }},
               },
           }));

Rows flashCommandRows(const std::string& name, std::int32_t (*function)(std::int32_t),
                      const std::string& command)
{
    const auto call = [=] { return Answer{function(kCamera), {}}; };
    const Texts executes{"Get " + command, command + ".IsAvailable", command + ".Execute"};
    return {
        {.behaviour = name + "ExecutesTheCommand",
         .call = call,
         .answer = {0, {}},
         .calls = executes},
        {.behaviour = name + "IgnoresTheCommandsResult",
         .call = call,
         .answer = {0, {}},
         .calls = executes,
         .script = [=](StandIn& s) { s.answer(command + ".Execute", {Code::Busy}); }},
        {.behaviour = name + "FailsWhileUnavailable",
         .call = call,
         .answer = {-1, {}},
         .calls = {"Get " + command, command + ".IsAvailable"},
         .script = [=](StandIn& s) { s.camera().command(command).available(false); }},
        {.behaviour = name + "FailsWithoutTheCommand",
         .call = call,
         .answer = {-1, {}},
         .calls = {"Get " + command},
         .script = [=](StandIn& s) { s.camera().remove(command); }},
    };
}

TELVO_ACCESSORS(
    FlashCard,
    join({
        flashCommandRows("StartWrite", expStartWriteToFlash, "FlashCardWrite"),
        flashCommandRows("StopWrite", expStopWriteToFlash, "FlashCardWriteStop"),
        rowsOf(Plain{.name = "IsInserted",
                     .call = [] { return get(expIsFlashCardAvailable); },
                     .reach = Reach::LookedUp,
                     .feature = "FlashCardAvailable",
                     .access = "FlashCardAvailable.GetValue",
                     .outs = {0},
                     .outsOnFailure = std::vector<double>{0},
                     .asksAvailability = true}),
        rowsOf(Plain{.name = "EnableWriteAfterRecordStop",
                     .call = [] { return set(expEnableFlashWriteAfterRecordStop, true); },
                     .reach = Reach::LookedUp,
                     .feature = "FlashCardWriteAfterRecordEnable",
                     .access = "FlashCardWriteAfterRecordEnable.SetValue 1",
                     .asksAvailability = true}),
        rowsOf(Plain{.name = "IsWriteAfterRecordStopEnabled",
                     .call = [] { return get(expIsFlashWriteAfterRecordStopEnabled); },
                     .reach = Reach::LookedUp,
                     .feature = "FlashCardWriteAfterRecordEnable",
                     .access = "FlashCardWriteAfterRecordEnable.GetValue",
                     .outs = {0},
                     .asksAvailability = true}),
        {
            {.behaviour = "IsInsertedWritesAByteOf1",
             .call = [] { return get(expIsFlashCardAvailable); },
             .answer = {0, {1}},
             .calls = {"Get FlashCardAvailable", "FlashCardAvailable.IsAvailable",
                       "FlashCardAvailable.GetValue"},
             .script = [](StandIn& s) { s.camera().boolean("FlashCardAvailable").value(true); }},
        },
    }));

} // namespace
