// External trigger and synchronisation lines.
#include "Accessor.h"

namespace
{

/// A line's polarity or source: an enumeration with one entry for 0 and one for everything else.
struct TwoEntries {
    std::string feature;
    std::function<Answer(std::int32_t)> write;
    std::function<Answer()> read;
    std::string zero;
    std::string one;
    std::string setter; // log texts before the entry name, and before "Error"
    std::string getter;
};

Rows rowsOf(const TwoEntries& line)
{
    const std::string& feature = line.feature;
    const std::string write = feature + ".SetValue ";
    const std::string read = feature + ".GetValue";
    const std::string setError = "log " + line.setter + " Error";
    const std::string getError = "log " + line.getter + " Error";
    const auto remove = [=](StandIn& s) { s.camera().remove(feature); };
    const auto retype = [=](StandIn& s) { s.camera().integer(feature); };
    const auto report = [=](const std::string& entry) {
        return [=](StandIn& s) { s.camera().enumeration(feature).value(entry); };
    };
    const auto writeOf = [=](std::int32_t value) { return [=] { return line.write(value); }; };
    return {
        {.behaviour = "Writes0AsTheFirstEntry",
         .call = writeOf(0),
         .answer = {0, {}},
         .calls = {write + line.zero, "log " + line.setter + " " + line.zero}},
        {.behaviour = "Writes1AsTheSecondEntry",
         .call = writeOf(1),
         .answer = {0, {}},
         .calls = {write + line.one, "log " + line.setter + " " + line.one}},
        {.behaviour = "WritesAnyOtherNumberAsTheSecondEntry",
         .call = writeOf(5),
         .answer = {0, {}},
         .calls = {write + line.one, "log " + line.setter + " " + line.one}},
        {.behaviour = "WriteFailsWhenTheCameraRefuses",
         .call = writeOf(0),
         .answer = {-1, {}},
         .calls = {write + line.zero, setError},
         .script = [=](StandIn& s) { s.answer(feature + ".SetValue", {Code::Busy}); }},
        {.behaviour = "WriteFailsWithoutTheFeature",
         .call = writeOf(1),
         .answer = {-1, {}},
         .calls = {setError},
         .beforeBinding = remove},
        {.behaviour = "WriteFailsWithAFeatureOfAnotherType",
         .call = writeOf(1),
         .answer = {-1, {}},
         .calls = {setError},
         .beforeBinding = retype},
        {.behaviour = "ReadsTheFirstEntryAs0",
         .call = line.read,
         .answer = {0, {0}},
         .calls = {read, "log " + line.getter + " " + line.zero + " 0"},
         .script = report(line.zero)},
        {.behaviour = "ReadsTheSecondEntryAs1",
         .call = line.read,
         .answer = {0, {1}},
         .calls = {read, "log " + line.getter + " " + line.one + " 1"},
         .script = report(line.one)},
        {.behaviour = "ReadFailsWith0ForAnUnknownEntry",
         .call = line.read,
         .answer = {-1, {0}},
         .calls = {read, getError},
         .script = report("Other")},
        {.behaviour = "ReadComparesEntriesExactly",
         .call = line.read,
         .answer = {-1, {0}},
         .calls = {read, getError},
         .script = report(line.one + " ")},
        {.behaviour = "ReadFailsWith0WhenTheCameraRefuses",
         .call = line.read,
         .answer = {-1, {0}},
         .calls = {read, getError},
         .script = [=](StandIn& s) { s.answer(feature + ".GetValue", {Code::Busy}); }},
        {.behaviour = "ReadFailsWithoutTheFeatureAndLeavesTheVariable",
         .call = line.read,
         .answer = {-1, {kUntouched}},
         .calls = {getError},
         .beforeBinding = remove},
    };
}

TELVO_ACCESSORS(ExternalTriggerPolarity,
                rowsOf(TwoEntries{
                    .feature = "ExtTriggerPolarity",
                    .write = [](auto value) { return set(expSetExternalTriggerPolarity, value); },
                    .read = [] { return get(expGetExternalTriggerPolarity); },
                    .zero = "falling",
                    .one = "raising",
                    .setter = "-- GEN setExternalTriggerPolarity",
                    .getter = "-- GEN getExternalTriggerPolarity"}));

TELVO_ACCESSORS(SyncInPolarity,
                rowsOf(TwoEntries{
                    .feature = "SyncInPolarity",
                    .write = [](auto value) { return set(expSetSyncInPolarity, value); },
                    .read = [] { return get(expGetSyncInPolarity); },
                    .zero = "falling",
                    .one = "raising",
                    .setter = "-- GEN setSyncInPolarity",
                    .getter = "-- GEN getSyncInPolarity"}));

TELVO_ACCESSORS(SyncOut,
                rowsOf(TwoEntries{.feature = "SyncOutSelect",
                                  .write = [](auto value) { return set(expSetSyncOut, value); },
                                  .read = [] { return get(expGetSyncOut); },
                                  .zero = "ARM",
                                  .one = "SyncOut",
                                  .setter = "-- GEN setSyncOut",
                                  .getter = "-- GEN getSyncOut"}));

TELVO_ACCESSORS(SyncArmPolarity,
                rowsOf(TwoEntries{
                    .feature = "SyncARMPolarity",
                    .write = [](auto value) { return set(expSetSyncARMPolarity, value); },
                    .read = [] { return get(expGetSyncARMPolarity); },
                    .zero = "negative",
                    .one = "positive",
                    .setter = "-- GEN setSyncARMPolarity",
                    .getter = "-- GEN getSyncARMPolarity"}));

TELVO_ACCESSORS(
    ExternalTrigger,
    join({
        rowsOf(Plain{.name = "Enable",
                     .call = [] { return set(expEnableExternalTrigger, true); },
                     .reach = Reach::Bound,
                     .feature = "ExtTriggerEnable",
                     .access = "ExtTriggerEnable.SetValue 1",
                     .done = "-- GEN enableExternalTrigger 1",
                     .failed = "-- GEN enableExternalTrigger Error"}),
        rowsOf(Plain{.name = "Disable",
                     .call = [] { return set(expEnableExternalTrigger, false); },
                     .reach = Reach::Bound,
                     .feature = "ExtTriggerEnable",
                     .access = "ExtTriggerEnable.SetValue 0",
                     .done = "-- GEN enableExternalTrigger 0",
                     .failed = "-- GEN enableExternalTrigger Error"}),
        rowsOf(Plain{.name = "IsEnabledSilently",
                     .call = [] { return get(expIsExternalTriggerEnabled); },
                     .reach = Reach::Bound,
                     .feature = "ExtTriggerEnable",
                     .access = "ExtTriggerEnable.GetValue",
                     .outs = {0}}),
        {
            {.behaviour = "IsEnabledWritesAByteOf1",
             .call = [] { return get(expIsExternalTriggerEnabled); },
             .answer = {0, {1}},
             .calls = {"ExtTriggerEnable.GetValue"},
             .script = [](StandIn& s) { s.camera().boolean("ExtTriggerEnable").value(true); }},
        },
    }));

TELVO_ACCESSORS(
    SyncIn,
    join({
        rowsOf(Plain{.name = "IsEnabled",
                     .call = [] { return get(expIsSyncInEnabled); },
                     .reach = Reach::Bound,
                     .feature = "SyncInEnable",
                     .access = "SyncInEnable.GetValue",
                     .done = "-- GEN isSyncInEnabled 0",
                     .failed = "-- GEN isSyncInEnabled Error",
                     .outs = {0}}),
        {
            {.behaviour = "IsEnabledWritesAByteOf1",
             .call = [] { return get(expIsSyncInEnabled); },
             .answer = {0, {1}},
             .calls = {"SyncInEnable.GetValue", "log -- GEN isSyncInEnabled 1"},
             .script = [](StandIn& s) { s.camera().boolean("SyncInEnable").value(true); }},
            {.behaviour = "EnableSucceedsAtTheFirstTry",
             .call = [] { return set(expEnableSyncIn, true); },
             .answer = {0, {}},
             .calls = {"SyncInEnable.SetValue 1", "log -- GEN 1. try: enableSyncIn 1"}},
            {.behaviour = "EnableTriesAgainHalfASecondAfterARefusal",
             .call = [] { return set(expEnableSyncIn, false); },
             .answer = {0, {}},
             .calls = {"SyncInEnable.SetValue 0",
                       "log ------- GEN 1. try: enableSyncIn Error Nr. 2, description: TIMEOUT",
                       "Sleep 500", "SyncInEnable.SetValue 0", "log -- GEN 2. try: enableSyncIn 0"},
             .script = [](StandIn& s) { s.answer("SyncInEnable.SetValue", {Code::Timeout}); }},
            {.behaviour = "EnableGivesUpAfterFourRefusalsAndFourSleeps",
             .call = [] { return set(expEnableSyncIn, true); },
             .answer = {-1, {}},
             .calls = {"SyncInEnable.SetValue 1",
                       "log ------- GEN 1. try: enableSyncIn Error Nr. 4, description: BUSY",
                       "Sleep 500", "SyncInEnable.SetValue 1",
                       "log ------- GEN 2. try: enableSyncIn Error Nr. 4, description: BUSY",
                       "Sleep 500", "SyncInEnable.SetValue 1",
                       "log ------- GEN 3. try: enableSyncIn Error Nr. 4, description: BUSY",
                       "Sleep 500", "SyncInEnable.SetValue 1",
                       "log ------- GEN 4. try: enableSyncIn Error Nr. 4, description: BUSY",
                       "Sleep 500", "log -- GEN enableSyncIn Error"},
             .script = [](StandIn& s) { s.answerAlways("SyncInEnable.SetValue", Code::Busy); }},
            {.behaviour = "EnableFailsAtOnceWithoutTheFeature",
             .call = [] { return set(expEnableSyncIn, true); },
             .answer = {-1, {}},
             .calls = {"log -- GEN enableSyncIn Error"},
             .beforeBinding = [](StandIn& s) { s.camera().remove("SyncInEnable"); }},
        },
    }));

} // namespace
