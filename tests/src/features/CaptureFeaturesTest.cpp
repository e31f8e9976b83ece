// Decimation, standby, burst, record-while-trigger and the multiple-slope shutter.
#include "Accessor.h"

namespace
{

TELVO_ACCESSORS(
    Decimation,
    join({
        rowsOf(Plain{.name = "Enable",
                     .call = [] { return set(expEnableDecimationMode, true); },
                     .reach = Reach::Bound,
                     .feature = "DecimationXY",
                     .access = "DecimationXY.SetValue 1",
                     .done = "-- GEN enableDecimationMode 1",
                     .failed = "-- GEN enableDecimationMode Error",
                     .asksAvailability = true}),
        rowsOf(Plain{.name = "IsEnabled",
                     .call = [] { return get(expIsDecimationModeEnabled); },
                     .reach = Reach::Bound,
                     .feature = "DecimationXY",
                     .access = "DecimationXY.GetValue",
                     .done = "-- GEN isDecimationModeEnabled 0",
                     .failed = "-- GEN isDecimationModeEnabled Error",
                     .outs = {0},
                     .asksAvailability = true}),
        {
            {.behaviour = "IsEnabledWritesAByteOf1",
             .call = [] { return get(expIsDecimationModeEnabled); },
             .answer = {0, {1}},
             .calls = {"DecimationXY.IsAvailable", "DecimationXY.GetValue",
                       "log -- GEN isDecimationModeEnabled 1"},
             .script = [](StandIn& s) { s.camera().boolean("DecimationXY").value(true); }},
        },
    }));

TELVO_ACCESSORS(RecordStandby,
                join({
                    rowsOf(Plain{.name = "Enable",
                                 .call = [] { return set(expEnableRecordStandby, true); },
                                 .reach = Reach::Bound,
                                 .feature = "RecordStandby",
                                 .access = "RecordStandby.SetValue 1",
                                 .done = "-- GEN enableRecordStandby 1",
                                 .failed = "-- GEN enableRecordStandby Error"}),
                    rowsOf(Plain{.name = "IsEnabled",
                                 .call = [] { return get(expIsRecordStandbyEnabled); },
                                 .reach = Reach::Bound,
                                 .feature = "RecordStandby",
                                 .access = "RecordStandby.GetValue",
                                 .done = "-- GEN isRecordStandbyEnabled 0",
                                 .failed = "-- GEN isRecordStandbyEnabled Error",
                                 .outs = {0}}),
                }));

TELVO_ACCESSORS(
    RecordBurstCount,
    join({
        rowsOf(Plain{.name = "Set",
                     .call = [] { return set(expSetSingleSettingRecordBurstCnt, 8); },
                     .reach = Reach::Bound,
                     .feature = "RecordBurstCnt",
                     .access = "RecordBurstCnt.SetValue 8"}),
        {
            {.behaviour = "GetLooksTheFeatureUpAndReads",
             .call = [] { return get(expGetSingleSettingRecordBurstCnt); },
             .answer = {0, {1, 1000, 5}},
             .calls = {"Get RecordBurstCnt", "RecordBurstCnt.GetMin", "RecordBurstCnt.GetMax",
                       "RecordBurstCnt.GetValue"}},
            {.behaviour = "GetEndsAtAFailedMinimum",
             .call = [] { return get(expGetSingleSettingRecordBurstCnt); },
             .answer = {-1, {kUntouched, kUntouched, kUntouched}},
             .calls = {"Get RecordBurstCnt", "RecordBurstCnt.GetMin"},
             .script = [](StandIn& s) { s.answer("RecordBurstCnt.GetMin", {Code::Timeout}); }},
            {.behaviour = "GetKeepsTheMinimumWhenTheMaximumFails",
             .call = [] { return get(expGetSingleSettingRecordBurstCnt); },
             .answer = {-1, {1, kUntouched, kUntouched}},
             .calls = {"Get RecordBurstCnt", "RecordBurstCnt.GetMin", "RecordBurstCnt.GetMax"},
             .script = [](StandIn& s) { s.answer("RecordBurstCnt.GetMax", {Code::Timeout}); }},
            {.behaviour = "GetKeepsTheLimitsWhenTheValueFails",
             .call = [] { return get(expGetSingleSettingRecordBurstCnt); },
             .answer = {-1, {1, 1000, kUntouched}},
             .calls = {"Get RecordBurstCnt", "RecordBurstCnt.GetMin", "RecordBurstCnt.GetMax",
                       "RecordBurstCnt.GetValue"},
             .script = [](StandIn& s) { s.answer("RecordBurstCnt.GetValue", {Code::Timeout}); }},
            {.behaviour = "GetFailsWithoutTheFeature",
             .call = [] { return get(expGetSingleSettingRecordBurstCnt); },
             .answer = {-1, {kUntouched, kUntouched, kUntouched}},
             .calls = {"Get RecordBurstCnt"},
             .script = [](StandIn& s) { s.camera().remove("RecordBurstCnt"); }},
        },
    }));

TELVO_ACCESSORS(RecordWhileTrigger,
                join({
                    rowsOf(Plain{
                        .name = "Set",
                        .call = [] { return set(expSetSingleSettingRecordWhileTrigger, true); },
                        .reach = Reach::LookedUp,
                        .feature = "RecordWhileTriggerActive",
                        .access = "RecordWhileTriggerActive.SetValue 1"}),
                    rowsOf(Plain{.name = "Get",
                                 .call = [] { return get(expGetSingleSettingRecordWhileTrigger); },
                                 .reach = Reach::LookedUp,
                                 .feature = "RecordWhileTriggerActive",
                                 .access = "RecordWhileTriggerActive.GetValue",
                                 .outs = {0}}),
                }));

Rows slopeRows(const std::string& feature, const std::function<Answer()>& read,
               const std::function<Answer()>& set7, const Answer& answer)
{
    const std::string getMin = feature + ".GetMin";
    const std::string getMax = feature + ".GetMax";
    const std::string getValue = feature + ".GetValue";
    const Answer untouched{-1, {kUntouched, kUntouched, kUntouched}};
    return join({
        rowsOf(Plain{.name = "Set",
                     .call = set7,
                     .reach = Reach::Bound,
                     .feature = feature,
                     .access = feature + ".SetValue 7"}),
        {
            {.behaviour = "GetReadsTheRangeAndTheValue",
             .call = read,
             .answer = answer,
             .calls = {getMin, getMax, getValue}},
            {.behaviour = "GetEndsAtAFailedMinimum",
             .call = read,
             .answer = untouched,
             .calls = {getMin},
             .script = [=](StandIn& s) { s.answer(getMin, {Code::Timeout}); }},
            {.behaviour = "GetEndsAtAFailedMaximum",
             .call = read,
             .answer = untouched,
             .calls = {getMin, getMax},
             .script = [=](StandIn& s) { s.answer(getMax, {Code::Timeout}); }},
            {.behaviour = "GetWritesNothingWhenTheValueFails",
             .call = read,
             .answer = untouched,
             .calls = {getMin, getMax, getValue},
             .script = [=](StandIn& s) { s.answer(getValue, {Code::Timeout}); }},
            {.behaviour = "GetFailsWithoutTheFeature",
             .call = read,
             .answer = untouched,
             .calls = {},
             .beforeBinding = [=](StandIn& s) { s.camera().remove(feature); }},
        },
    });
}

TELVO_ACCESSORS(MultipleSlopeDual,
                slopeRows(
                    "MultipleSlopeDualRaw", [] { return get(expGetMultipleSlopeDual); },
                    [] { return set(expSetMultipleSlopeDual, 7); }, {0, {1, 90, 20}}));

TELVO_ACCESSORS(MultipleSlopeTriple,
                slopeRows(
                    "MultipleSlopeTripleRaw", [] { return get(expGetMultipleSlopeTriple); },
                    [] { return set(expSetMultipleSlopeTriple, 7); }, {0, {2, 95, 30}}));

Row writesSlopeMode(std::int32_t mode, const std::string& entry)
{
    return {.behaviour = "Writes" + std::to_string(mode) + "As" + entry,
            .call = [=] { return set(expSetMultipleSlopeMode, mode); },
            .answer = {0, {}},
            .calls = {"MultipleSlopeMode.SetValue " + entry}};
}

Row readsSlopeMode(const std::string& entry, std::int32_t result, std::int32_t out)
{
    return {
        .behaviour = "Reads" + entry,
        .call = [] { return get(expGetMultipleSlopeMode); },
        .answer = {result, {static_cast<double>(out)}},
        .calls = {"MultipleSlopeMode.GetValue"},
        .script = [=](StandIn& s) { s.camera().enumeration("MultipleSlopeMode").value(entry); }};
}

TELVO_ACCESSORS(MultipleSlopeMode,
                Rows{
                    writesSlopeMode(0, "NormalShutter"),
                    writesSlopeMode(1, "DualSlope"),
                    writesSlopeMode(2, "TripleSlope"),
                    {.behaviour = "SendsAnEmptyNameForAnyOtherNumber",
                     .call = [] { return set(expSetMultipleSlopeMode, 3); },
                     .answer = {-1, {}},
                     .calls = {"MultipleSlopeMode.SetValue"}},
                    {.behaviour = "WriteFailsWithoutTheFeature",
                     .call = [] { return set(expSetMultipleSlopeMode, 0); },
                     .answer = {-1, {}},
                     .calls = {},
                     .beforeBinding = [](StandIn& s) { s.camera().remove("MultipleSlopeMode"); }},
                    readsSlopeMode("NormalShutter", 0, 0),
                    readsSlopeMode("DualSlope", 0, 1),
                    readsSlopeMode("TripleSlope", 0, 2),
                    readsSlopeMode("OtherSlope", 0, kUntouched),
                    {.behaviour = "ReadFailsWhenTheCameraRefuses",
                     .call = [] { return get(expGetMultipleSlopeMode); },
                     .answer = {-1, {kUntouched}},
                     .calls = {"MultipleSlopeMode.GetValue"},
                     .script =
                         [](StandIn& s) { s.answer("MultipleSlopeMode.GetValue", {Code::Busy}); }},
                    {.behaviour = "ReadFailsWithoutTheFeature",
                     .call = [] { return get(expGetMultipleSlopeMode); },
                     .answer = {-1, {kUntouched}},
                     .calls = {},
                     .beforeBinding = [](StandIn& s) { s.camera().remove("MultipleSlopeMode"); }},
                });

} // namespace
