#include "Accessor.h"

namespace
{

TELVO_ACCESSORS(
    TrailerCounter,
    join({
        rowsOf({.name = "Set",
                .call = [] { return set(expSetTrailerCounter, 300); },
                .reach = Reach::LookedUp,
                .feature = "RecordTrailer",
                .access = "RecordTrailer.SetValue 300",
                .done = "-- GEN setTrailerCounter 300",
                .failed = "-- GEN setTrailerCounter Error"}),
        {
            {.behaviour = "GetAsksForAvailabilityAndReads",
             .call = [] { return get(expGetTrailerCounter); },
             .answer = {0, {0, 6400, 100}},
             .calls = {"RecordTrailer.IsAvailable", "RecordTrailer.GetMin", "RecordTrailer.GetMax",
                       "RecordTrailer.GetValue",
                       "log -- GEN getTrailerCounter Min 0 Max 6400 Value 100"}},
            {.behaviour = "GetGivesMinus2WhileUnavailable",
             .call = [] { return get(expGetTrailerCounter); },
             .answer = {-2, {kUntouched, kUntouched, kUntouched}},
             .calls = {"RecordTrailer.IsAvailable", "log -- GEN getTrailerCounter Error N.A."},
             .script = [](StandIn& s) { s.camera().integer("RecordTrailer").available(false); }},
            {.behaviour = "GetMakesAllThreeReadsAndWritesNothingWhenOneFails",
             .call = [] { return get(expGetTrailerCounter); },
             .answer = {-1, {kUntouched, kUntouched, kUntouched}},
             .calls = {"RecordTrailer.IsAvailable", "RecordTrailer.GetMin", "RecordTrailer.GetMax",
                       "RecordTrailer.GetValue", "log -- GEN getTrailerCounter Error"},
             .script = [](StandIn& s) { s.answer("RecordTrailer.GetMax", {Code::Timeout}); }},
            {.behaviour = "GetFailsWithoutTheFeature",
             .call = [] { return get(expGetTrailerCounter); },
             .answer = {-1, {kUntouched, kUntouched, kUntouched}},
             .calls = {"log -- GEN getTrailerCounter Error"},
             .beforeBinding = [](StandIn& s) { s.camera().remove("RecordTrailer"); }},
        },
    }));

} // namespace
