// Exposure time and frame rate: the two settings whose reads are retried.
#include "Accessor.h"

namespace
{

const Texts kThreeExposureReads{"ExposureTimeRaw.GetMin", "ExposureTimeRaw.GetMax",
                                "ExposureTimeRaw.GetValue"};

TELVO_ACCESSORS(
    ExposureTime,
    join({
        rowsOf({.name = "Set",
                .call = [] { return set(expSetExposureTime, 640); },
                .reach = Reach::Bound,
                .feature = "ExposureTimeRaw",
                .access = "ExposureTimeRaw.SetValue 640",
                .done = "-- GEN setExposureTime 640",
                .failed = "-- GEN setExposureTime Error"}),
        {
            {.behaviour = "SetPassesAValueOutsideTheLimitsToTheCamera",
             .call = [] { return set(expSetExposureTime, 1000001); },
             .answer = {-1, {}},
             .calls = {"ExposureTimeRaw.SetValue 1000001", "log -- GEN setExposureTime Error"}},
            {.behaviour = "SetWidensTheValueWithItsSign",
             .call = [] { return set(expSetExposureTime, -1); },
             .answer = {0, {}},
             .calls = {"ExposureTimeRaw.SetValue -1", "log -- GEN setExposureTime -1"},
             .script = [](StandIn& s) { s.camera().integer("ExposureTimeRaw").range(-5, 5); }},
            {.behaviour = "GetReadsTheRangeAndTheValue",
             .call = [] { return get(expGetExposureTime); },
             .answer = {0, {2, 1000000, 500}},
             .calls = kThreeExposureReads +
                      Texts{"log -- GEN 1. try: getExposureTime Min 2 Max 1000000 Value 500"}},
            {.behaviour = "GetNarrowsTo32Bits",
             .call = [] { return get(expGetExposureTime); },
             .answer = {0, {-1, 6, 5}},
             .calls = kThreeExposureReads +
                      Texts{"log -- GEN 1. try: getExposureTime Min -1 Max 6 Value 5"},
             .script =
                 [](StandIn& s) {
                     s.camera()
                         .integer("ExposureTimeRaw")
                         .range(0xFFFFFFFF, 0x100000006)
                         .value(0x200000005);
                 }},
            {.behaviour = "GetFailsAtOnceWithoutTheFeature",
             .call = [] { return get(expGetExposureTime); },
             .answer = {-1, {kUntouched, kUntouched, kUntouched}},
             .calls = {"log -- GEN getExposureTime Error"},
             .beforeBinding = [](StandIn& s) { s.camera().remove("ExposureTimeRaw"); }},
            {.behaviour = "GetTriesAgainHalfASecondLaterWhileTheMaximumIsZero",
             .call = [] { return get(expGetExposureTime); },
             .answer = {0, {2, 1000000, 500}},
             .calls = kThreeExposureReads +
                      Texts{"log -- GEN 1. try: getExposureTime Min 2 Max 0 Value 500",
                            "Sleep 500"} +
                      kThreeExposureReads +
                      Texts{"log -- GEN 2. try: getExposureTime Min 2 Max 1000000 Value 500"},
             .script =
                 [](StandIn& s) { s.camera().integer("ExposureTimeRaw").next("GetMax", {0}); }},
            {.behaviour = "GetGivesUpAfterFourRejectedTriesAndKeepsTheLastValues",
             .call = [] { return get(expGetExposureTime); },
             .answer = {-1, {9, 9, 4}},
             .calls = kThreeExposureReads +
                      Texts{"log -- GEN 1. try: getExposureTime Min 9 Max 9 Value 1", "Sleep 500"} +
                      kThreeExposureReads +
                      Texts{"log -- GEN 2. try: getExposureTime Min 9 Max 9 Value 2", "Sleep 500"} +
                      kThreeExposureReads +
                      Texts{"log -- GEN 3. try: getExposureTime Min 9 Max 9 Value 3", "Sleep 500"} +
                      kThreeExposureReads +
                      Texts{"log -- GEN 4. try: getExposureTime Min 9 Max 9 Value 4", "Sleep 500",
                            "log -- GEN getExposureTime Error"},
             .script =
                 [](StandIn& s) {
                     s.camera()
                         .integer("ExposureTimeRaw")
                         .range(9, 9)
                         .next("GetValue", {1, 2, 3, 4});
                 }},
            {.behaviour = "GetFailsForGoodOnceAReadFailed",
             .call = [] { return get(expGetExposureTime); },
             .answer = {-1, {kUntouched, kUntouched, kUntouched}},
             .calls = times(4, kThreeExposureReads) + Texts{"log -- GEN getExposureTime Error"},
             .script = [](StandIn& s) { s.answer("ExposureTimeRaw.GetMax", {Code::Timeout}); }},
            {.behaviour = "GetKeepsARejectedTrysValuesWhenALaterReadFails",
             .call = [] { return get(expGetExposureTime); },
             .answer = {-1, {2, 0, 500}},
             .calls = kThreeExposureReads +
                      Texts{"log -- GEN 1. try: getExposureTime Min 2 Max 0 Value 500",
                            "Sleep 500"} +
                      times(3, kThreeExposureReads) + Texts{"log -- GEN getExposureTime Error"},
             .script =
                 [](StandIn& s) {
                     s.camera().integer("ExposureTimeRaw").next("GetMax", {0});
                     s.answer("ExposureTimeRaw.GetMin", {Code::Ok, Code::Timeout});
                 }},
        },
    }));

const Texts kThreeRateReads{"AcquisitionFrameRateRaw.GetMin", "AcquisitionFrameRateRaw.GetMax",
                            "AcquisitionFrameRateRaw.GetValue"};

TELVO_ACCESSORS(
    FrameRate,
    Rows{
        {.behaviour = "SetAsksForAvailabilityAndWrites",
         .call = [] { return set(expSetFrameRate, 2000); },
         .answer = {0, {}},
         .calls = {"AcquisitionFrameRateRaw.IsAvailable", "AcquisitionFrameRateRaw.SetValue 2000",
                   "log -- GEN 1. try: setFramerate 2000"}},
        {.behaviour = "SetFailsAtOnceWithoutTheFeature",
         .call = [] { return set(expSetFrameRate, 2000); },
         .answer = {-1, {}},
         .calls = {"log -- GEN setFramerate Error"},
         .beforeBinding = [](StandIn& s) { s.camera().remove("AcquisitionFrameRateRaw"); }},
        {.behaviour = "SetTriesAgainAtOnceAfterARefusal",
         .call = [] { return set(expSetFrameRate, 2000); },
         .answer = {0, {}},
         .calls = {"AcquisitionFrameRateRaw.IsAvailable", "AcquisitionFrameRateRaw.SetValue 2000",
                   "log -- GEN 1. try: setFramerate Error Nr. 4, description: BUSY",
                   "AcquisitionFrameRateRaw.IsAvailable", "AcquisitionFrameRateRaw.SetValue 2000",
                   "log -- GEN 2. try: setFramerate 2000"},
         .script = [](StandIn& s) { s.answer("AcquisitionFrameRateRaw.SetValue", {Code::Busy}); }},
        {.behaviour = "SetGivesUpAfterFourRefusals",
         .call = [] { return set(expSetFrameRate, 7); },
         .answer = {-1, {}},
         .calls = {"AcquisitionFrameRateRaw.IsAvailable", "AcquisitionFrameRateRaw.SetValue 7",
                   "log -- GEN 1. try: setFramerate Error Nr. 10, description: OUT_OF_RANGE",
                   "AcquisitionFrameRateRaw.IsAvailable", "AcquisitionFrameRateRaw.SetValue 7",
                   "log -- GEN 2. try: setFramerate Error Nr. 10, description: OUT_OF_RANGE",
                   "AcquisitionFrameRateRaw.IsAvailable", "AcquisitionFrameRateRaw.SetValue 7",
                   "log -- GEN 3. try: setFramerate Error Nr. 10, description: OUT_OF_RANGE",
                   "AcquisitionFrameRateRaw.IsAvailable", "AcquisitionFrameRateRaw.SetValue 7",
                   "log -- GEN 4. try: setFramerate Error Nr. 10, description: OUT_OF_RANGE",
                   "log -- GEN setFramerate Error"}},
        {.behaviour = "SetSpendsATrySilentlyWhileUnavailable",
         .call = [] { return set(expSetFrameRate, 2000); },
         .answer = {0, {}},
         .calls = {"AcquisitionFrameRateRaw.IsAvailable", "AcquisitionFrameRateRaw.IsAvailable",
                   "AcquisitionFrameRateRaw.IsAvailable", "AcquisitionFrameRateRaw.SetValue 2000",
                   "log -- GEN 3. try: setFramerate 2000"},
         .script =
             [](StandIn& s) {
                 s.answer("AcquisitionFrameRateRaw.IsAvailable",
                          {Code::NotAvailable, Code::NotAvailable});
             }},
        {.behaviour = "SetGivesUpAfterFourSilentTriesWhileUnavailable",
         .call = [] { return set(expSetFrameRate, 2000); },
         .answer = {-1, {}},
         .calls = times(4, {"AcquisitionFrameRateRaw.IsAvailable"}) +
                  Texts{"log -- GEN setFramerate Error"},
         .script =
             [](StandIn& s) { s.camera().integer("AcquisitionFrameRateRaw").available(false); }},
        {.behaviour = "GetReadsTheRangeAndTheValue",
         .call = [] { return get(expGetFrameRate); },
         .answer = {0, {10, 100000, 1000}},
         .calls = kThreeRateReads +
                  Texts{"log -- GEN 1. try: getFramerate Min 10 Max 100000 Value 1000"}},
        {.behaviour = "GetFailsAtOnceWithoutTheFeature",
         .call = [] { return get(expGetFrameRate); },
         .answer = {-1, {kUntouched, kUntouched, kUntouched}},
         .calls = {"log -- GEN getFramerate Error"},
         .beforeBinding = [](StandIn& s) { s.camera().remove("AcquisitionFrameRateRaw"); }},
        {.behaviour = "GetTakesTheThirdTryAfterTwoZeroMaxima",
         .call = [] { return get(expGetFrameRate); },
         .answer = {0, {10, 100000, 1000}},
         .calls = kThreeRateReads +
                  Texts{"log -- GEN 1. try: getFramerate Min 10 Max 0 Value 1000", "Sleep 500"} +
                  kThreeRateReads +
                  Texts{"log -- GEN 2. try: getFramerate Min 10 Max 0 Value 1000", "Sleep 500"} +
                  kThreeRateReads +
                  Texts{"log -- GEN 3. try: getFramerate Min 10 Max 100000 Value 1000"},
         .script =
             [](StandIn& s) {
                 s.camera().integer("AcquisitionFrameRateRaw").next("GetMax", {0, 0});
             }},
        {.behaviour = "GetRejectsAZeroMaximumAboveTheMinimum",
         .call = [] { return get(expGetFrameRate); },
         .answer = {0, {-5, -1, -3}},
         .calls = kThreeRateReads +
                  Texts{"log -- GEN 1. try: getFramerate Min -5 Max 0 Value -3", "Sleep 500"} +
                  kThreeRateReads + Texts{"log -- GEN 2. try: getFramerate Min -5 Max -1 Value -3"},
         .script =
             [](StandIn& s) {
                 s.camera()
                     .integer("AcquisitionFrameRateRaw")
                     .range(-5, -1)
                     .value(-3)
                     .next("GetMax", {0});
             }},
        {.behaviour = "GetJudgesFailedReadsTryByTry",
         .call = [] { return get(expGetFrameRate); },
         .answer = {0, {10, 100000, 1000}},
         .calls = kThreeRateReads + kThreeRateReads +
                  Texts{"log -- GEN 2. try: getFramerate Min 10 Max 100000 Value 1000"},
         .script = [](StandIn& s) { s.answer("AcquisitionFrameRateRaw.GetMin", {Code::Timeout}); }},
        {.behaviour = "GetGivesUpAfterFourFailedReadsWithoutSleeping",
         .call = [] { return get(expGetFrameRate); },
         .answer = {-1, {kUntouched, kUntouched, kUntouched}},
         .calls = times(4, kThreeRateReads) + Texts{"log -- GEN getFramerate Error"},
         .script =
             [](StandIn& s) { s.answerAlways("AcquisitionFrameRateRaw.GetValue", Code::Timeout); }},
    });

} // namespace
