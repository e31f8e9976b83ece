// Black level and gain.
#include "Accessor.h"

namespace
{

TELVO_ACCESSORS(
    BlackLevel,
    join({
        rowsOf({.name = "Set",
                .call = [] { return set(expSetBlacklevel, 12); },
                .reach = Reach::Bound,
                .feature = "BlackLevelRaw",
                .access = "BlackLevelRaw.SetValue 12",
                .done = "-- GEN setBlacklevel 12",
                .failed = "-- GEN setBlacklevel Error"}),
        {
            {.behaviour = "GetReadsTheRangeAndTheValue",
             .call = [] { return get(expGetBlacklevel); },
             .answer = {0, {0, 255, 100}},
             .calls = {"BlackLevelRaw.GetMin", "BlackLevelRaw.GetMax", "BlackLevelRaw.GetValue",
                       "log -- GEN getBlacklevel Min 0 Max 255 Value 100"}},
            {.behaviour = "GetMakesAllThreeReadsAndWritesNothingWhenTheFirstFails",
             .call = [] { return get(expGetBlacklevel); },
             .answer = {-1, {kUntouched, kUntouched, kUntouched}},
             .calls = {"BlackLevelRaw.GetMin", "BlackLevelRaw.GetMax", "BlackLevelRaw.GetValue",
                       "log -- GEN getBlacklevel Error"},
             .script = [](StandIn& s) { s.answer("BlackLevelRaw.GetMin", {Code::Timeout}); }},
            {.behaviour = "GetWritesNothingWhenTheLastReadFails",
             .call = [] { return get(expGetBlacklevel); },
             .answer = {-1, {kUntouched, kUntouched, kUntouched}},
             .calls = {"BlackLevelRaw.GetMin", "BlackLevelRaw.GetMax", "BlackLevelRaw.GetValue",
                       "log -- GEN getBlacklevel Error"},
             .script = [](StandIn& s) { s.answer("BlackLevelRaw.GetValue", {Code::Timeout}); }},
            {.behaviour = "GetFailsWithoutTheFeature",
             .call = [] { return get(expGetBlacklevel); },
             .answer = {-1, {kUntouched, kUntouched, kUntouched}},
             .calls = {"log -- GEN getBlacklevel Error"},
             .beforeBinding = [](StandIn& s) { s.camera().remove("BlackLevelRaw"); }},
        },
    }));

Answer setGain(double value)
{
    return {expSetGainRaw(value, kCamera), {}};
}

TELVO_ACCESSORS(
    Gain,
    join({
        rowsOf({.name = "Set",
                .call = [] { return setGain(3.0); },
                .reach = Reach::Bound,
                .feature = "GainRaw",
                .access = "GainRaw.SetValue 3",
                .done = "-- GEN setDigitalGain 3.000000",
                .failed = "-- GEN setDigitalGain Error"}),
        {
            {.behaviour = "SetCutsTheFractionOffAndLogsTheDouble",
             .call = [] { return setGain(2.9); },
             .answer = {0, {}},
             .calls = {"GainRaw.SetValue 2", "log -- GEN setDigitalGain 2.900000"}},
            {.behaviour = "SetTruncatesNegativeValuesTowardZero",
             .call = [] { return setGain(-1.5); },
             .answer = {0, {}},
             .calls = {"GainRaw.SetValue -1", "log -- GEN setDigitalGain -1.500000"},
             .script = [](StandIn& s) { s.camera().integer("GainRaw").range(-3, 3); }},
            {.behaviour = "GetGivesTheRawNumbersAsDoubles",
             .call = [] { return get(expGetGainRaw); },
             .answer = {0, {0.0, 7.0, 3.0}},
             .calls = {"GainRaw.GetMin", "GainRaw.GetMax", "GainRaw.GetValue",
                       "log -- GEN getDigitalGain Min 0.000000 Max 7.000000 Value 3.000000"},
             .script = [](StandIn& s) { s.camera().integer("GainRaw").value(3); }},
            {.behaviour = "GetConvertsBeyond32Bits",
             .call = [] { return get(expGetGainRaw); },
             .answer = {0, {-4294967296.0, 8589934592.0, 4294967297.0}},
             .calls = {"GainRaw.GetMin", "GainRaw.GetMax", "GainRaw.GetValue",
                       "log -- GEN getDigitalGain Min -4294967296.000000 Max 8589934592.000000 "
                       "Value 4294967297.000000"},
             .script =
                 [](StandIn& s) {
                     s.camera()
                         .integer("GainRaw")
                         .range(-0x100000000, 0x200000000)
                         .value(0x100000001);
                 }},
            {.behaviour = "GetMakesAllThreeReadsAndWritesNothingWhenOneFails",
             .call = [] { return get(expGetGainRaw); },
             .answer = {-1, {kUntouched, kUntouched, kUntouched}},
             .calls = {"GainRaw.GetMin", "GainRaw.GetMax", "GainRaw.GetValue",
                       "log -- GEN getDigitalGain Error"},
             .script = [](StandIn& s) { s.answer("GainRaw.GetMin", {Code::Timeout}); }},
            {.behaviour = "GetFailsWithoutTheFeature",
             .call = [] { return get(expGetGainRaw); },
             .answer = {-1, {kUntouched, kUntouched, kUntouched}},
             .calls = {"log -- GEN getDigitalGain Error"},
             .beforeBinding = [](StandIn& s) { s.camera().remove("GainRaw"); }},
        },
    }));

} // namespace
