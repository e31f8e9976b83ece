// Parameters of link and stream by name, the packet size, and the two parameter browsers.
#include "Accessor.h"

namespace
{

Answer setParam(const std::string& name, std::int32_t value)
{
    return {expSetStreamParam(name.c_str(), static_cast<std::uint32_t>(value), kCamera), {}};
}

Answer getParam(const std::string& name)
{
    std::uint32_t value = kUntouched;
    const std::int32_t result = expGetStreamParam(name.c_str(), &value, kCamera);
    return {result, {static_cast<double>(static_cast<std::int32_t>(value))}};
}

/// A parameter that one getter and one setter reach under its own name.
struct Parameter {
    std::string name;
    std::string parameter; // as the calls name it: with its array
    std::string method;    // in the error lines, behind "get" and "set"
    double value;          // in the stand-in
};

ScriptedArray& arrayOf(StandIn& s, const Parameter& row)
{
    return row.parameter.starts_with("stream/") ? s.stream() : s.link();
}

Rows rowsOf(const Parameter& row)
{
    const auto setIt = [=] { return setParam(row.name, 64); };
    const auto getIt = [=] { return getParam(row.name); };
    const std::string line = "log setStreamParameter " + row.name + " 64";
    const std::string lookup = "Get " + row.parameter;
    const std::string write = row.parameter + ".SetValue";
    const std::string read = row.parameter + ".GetValue";
    const auto remove = [=](StandIn& s) { arrayOf(s, row).remove(row.name); };
    return {
        {.behaviour = "Set" + row.name,
         .call = setIt,
         .answer = {0, {}},
         .calls = {line, lookup, write + " 64", "Sleep 100"}},
        {.behaviour = "Set" + row.name + "SucceedsWhenItIsRefused",
         .call = setIt,
         .answer = {0, {}},
         .calls = {line, lookup, write + " 64", "Sleep 100"},
         .script = [=](StandIn& s) { s.answer(write, {Code::OutOfRange}); }},
        {.behaviour = "Set" + row.name + "FailsWithoutTheParameter",
         .call = setIt,
         .answer = {-1, {}},
         .calls = {line, lookup, "log -- GEN set" + row.method + " Error"},
         .script = remove},
        {.behaviour = "Get" + row.name,
         .call = getIt,
         .answer = {0, {row.value}},
         .calls = {lookup, read, "Sleep 100"}},
        {.behaviour = "Get" + row.name + "SucceedsAndLeavesTheVariableWhenTheReadFails",
         .call = getIt,
         .answer = {0, {kUntouched}},
         .calls = {lookup, read, "Sleep 100"},
         .script = [=](StandIn& s) { s.answer(read, {Code::Timeout}); }},
        {.behaviour = "Get" + row.name + "FailsWithoutTheParameter",
         .call = getIt,
         .answer = {-1, {kUntouched}},
         .calls = {lookup, "log -- GEN get" + row.method + " Error"},
         .script = remove},
        {.behaviour = "Get" + row.name + "FailsWithAParameterOfAnotherType",
         .call = getIt,
         .answer = {-1, {kUntouched}},
         .calls = {lookup, "log -- GEN get" + row.method + " Error"},
         .script = [=](StandIn& s) { arrayOf(s, row).boolean(row.name); }},
    };
}

/// Parameters of the stream are out of reach while it is closed, without a line of their own.
Rows closedRowsOf(const Parameter& row)
{
    const auto close = [](StandIn& s) { s.dropStreams(); };
    return {
        {.behaviour = "Set" + row.name + "FailsWhileTheStreamIsClosed",
         .call = [=] { return setParam(row.name, 64); },
         .answer = {-1, {}},
         .calls = {"log setStreamParameter " + row.name + " 64"},
         .script = close},
        {.behaviour = "Get" + row.name + "FailsWhileTheStreamIsClosed",
         .call = [=] { return getParam(row.name); },
         .answer = {-1, {kUntouched}},
         .calls = {},
         .script = close},
    };
}

Rows streamRowsOf(const Parameter& row)
{
    return join({rowsOf(row), closedRowsOf(row)});
}

TELVO_ACCESSORS(
    StreamParameter,
    join({
        streamRowsOf({"FirstPacketTimeout", "stream/FirstPacketTimeout", "FirstPacketTimeout", 0}),
        streamRowsOf({"PacketTimeout", "stream/PacketTimeout", "PacketTimeout", 1000}),
        streamRowsOf({"RequestTimeout", "stream/RequestTimeout", "RequestTimeout", 1100}),
        streamRowsOf({"DefaultImageTimeout", "stream/DefaultImageTimeout", "DefaultImageTimeout",
                      1100}),
        streamRowsOf({"MaximumPendingResends", "stream/MaximumPendingResends",
                      "MaximumPendingResends", 0}),
    }));

TELVO_ACCESSORS(LinkParameter,
                join({
                    rowsOf(Parameter{"AnswerTimeout", "link/AnswerTimeout", "AnswerTimeout", 1000}),
                    rowsOf(Parameter{"HeartbeatInterval", "link/HeartbeatInterval",
                                     "HeartbeatInterval", 1000}),
                }));

TELVO_ACCESSORS(
    HeartbeatTimeout,
    Rows{
        {.behaviour = "SetWritesTheLinkThenTheDevice",
         .call = [] { return setParam("HeartbeatTimeout", 5000); },
         .answer = {0, {}},
         .calls = {"log setStreamParameter HeartbeatTimeout 5000",
                   "Get link/DefaultHeartbeatTimeout", "link/DefaultHeartbeatTimeout.SetValue 5000",
                   "Sleep 100", "Get GevHeartbeatTimeout", "GevHeartbeatTimeout.SetValue 5000",
                   "Sleep 100"}},
        {.behaviour = "SetSucceedsWhenBothAreRefused",
         .call = [] { return setParam("HeartbeatTimeout", 5000); },
         .answer = {0, {}},
         .calls = {"log setStreamParameter HeartbeatTimeout 5000",
                   "Get link/DefaultHeartbeatTimeout", "link/DefaultHeartbeatTimeout.SetValue 5000",
                   "Sleep 100", "Get GevHeartbeatTimeout", "GevHeartbeatTimeout.SetValue 5000",
                   "Sleep 100"},
         .script =
             [](StandIn& s) {
                 s.answer("link/DefaultHeartbeatTimeout.SetValue", {Code::Busy});
                 s.answer("GevHeartbeatTimeout.SetValue", {Code::Busy});
             }},
        {.behaviour = "SetFailsWithoutTheLinksParameter",
         .call = [] { return setParam("HeartbeatTimeout", 5000); },
         .answer = {-1, {}},
         .calls = {"log setStreamParameter HeartbeatTimeout 5000",
                   "Get link/DefaultHeartbeatTimeout", "log -- GEN setHeartbeatTimeout Error"},
         .script = [](StandIn& s) { s.link().remove("DefaultHeartbeatTimeout"); }},
        {.behaviour = "SetFailsWithoutTheDevicesFeatureAfterWritingTheLink",
         .call = [] { return setParam("HeartbeatTimeout", 5000); },
         .answer = {-1, {}},
         .calls = {"log setStreamParameter HeartbeatTimeout 5000",
                   "Get link/DefaultHeartbeatTimeout", "link/DefaultHeartbeatTimeout.SetValue 5000",
                   "Sleep 100", "Get GevHeartbeatTimeout", "log -- GEN setHeartbeatTimeout Error"},
         .script = [](StandIn& s) { s.camera().remove("GevHeartbeatTimeout"); }},
        {.behaviour = "GetReadsTheDevice",
         .call = [] { return getParam("HeartbeatTimeout"); },
         .answer = {0, {2500}},
         .calls = {"Get GevHeartbeatTimeout", "GevHeartbeatTimeout.GetValue", "Sleep 100"},
         .script = [](StandIn& s) { s.camera().integer("GevHeartbeatTimeout").value(2500); }},
        {.behaviour = "GetFailsWithoutTheDevicesFeature",
         .call = [] { return getParam("HeartbeatTimeout"); },
         .answer = {-1, {kUntouched}},
         .calls = {"Get GevHeartbeatTimeout", "log -- GEN getHeartbeatTimeout Error"},
         .script = [](StandIn& s) { s.camera().remove("GevHeartbeatTimeout"); }},
    });

TELVO_ACCESSORS(
    InterPacketDelay,
    Rows{
        {.behaviour = "SetSleepsBeforeItsLine",
         .call = [] { return setParam("InterPacketDelay", 2200); },
         .answer = {0, {}},
         .calls = {"log setStreamParameter InterPacketDelay 2200", "Get GevSCPD",
                   "GevSCPD.SetValue 2200", "Sleep 100", "log -- GEN setInterPacketDelay 2200"}},
        {.behaviour = "SetFailsWhenTheCameraRefuses",
         .call = [] { return setParam("InterPacketDelay", -1); },
         .answer = {-1, {}},
         .calls = {"log setStreamParameter InterPacketDelay -1", "Get GevSCPD",
                   "GevSCPD.SetValue -1", "Sleep 100", "log -- GEN setInterPacketDelay Error"}},
        {.behaviour = "SetFailsWithoutTheFeature",
         .call = [] { return setParam("InterPacketDelay", 2200); },
         .answer = {-1, {}},
         .calls = {"log setStreamParameter InterPacketDelay 2200", "Get GevSCPD",
                   "log -- GEN setInterPacketDelay Error"},
         .script = [](StandIn& s) { s.camera().remove("GevSCPD"); }},
        {.behaviour = "CannotBeRead",
         .call = [] { return getParam("InterPacketDelay"); },
         .answer = {-1, {kUntouched}},
         .calls = {}},
    });

const Texts kWritesPacketSize8000{"Get GevSCPSPacketSize", "GevSCPSPacketSize.SetValue 8000",
                                  "log -- GEN setPackageSize 8000", "Sleep 100"};
const Texts kReadsPacketSize{"Get GevSCPSPacketSize", "GevSCPSPacketSize.GetValue",
                             "log -- GEN getPackageSize 1440", "Sleep 100"};

TELVO_ACCESSORS(
    PackageSize,
    Rows{
        {.behaviour = "SetWritesAndLogs",
         .call = [] { return set(expSetPackageSize, 8000); },
         .answer = {0, {}},
         .calls = kWritesPacketSize8000},
        {.behaviour = "SetSucceedsAndLogsWhenTheCameraRefuses",
         .call = [] { return set(expSetPackageSize, 8000); },
         .answer = {0, {}},
         .calls = kWritesPacketSize8000,
         .script = [](StandIn& s) { s.answer("GevSCPSPacketSize.SetValue", {Code::Busy}); }},
        {.behaviour = "SetFailsWithoutTheFeature",
         .call = [] { return set(expSetPackageSize, 8000); },
         .answer = {-1, {}},
         .calls = {"Get GevSCPSPacketSize", "log -- GEN setPackageSize Error"},
         .script = [](StandIn& s) { s.camera().remove("GevSCPSPacketSize"); }},
        {.behaviour = "SetByNameLogsTheName",
         .call = [] { return setParam("GevSCPSPacketSize", 8000); },
         .answer = {0, {}},
         .calls = Texts{"log setStreamParameter GevSCPSPacketSize 8000"} + kWritesPacketSize8000},
        {.behaviour = "SetByAnEmptyName",
         .call = [] { return setParam("", 8000); },
         .answer = {0, {}},
         .calls = Texts{"log setStreamParameter  8000"} + kWritesPacketSize8000},
        {.behaviour = "GetReadsAndLogs",
         .call = [] { return get(expGetPackageSize); },
         .answer = {0, {1440}},
         .calls = kReadsPacketSize},
        {.behaviour = "GetFailsWithoutTheFeature",
         .call = [] { return get(expGetPackageSize); },
         .answer = {-1, {kUntouched}},
         .calls = {"Get GevSCPSPacketSize", "log -- GEN getPackageSize Error"},
         .script = [](StandIn& s) { s.camera().remove("GevSCPSPacketSize"); }},
        {.behaviour = "GetByName",
         .call = [] { return getParam("GevSCPSPacketSize"); },
         .answer = {0, {1440}},
         .calls = kReadsPacketSize},
        {.behaviour = "GetByAnEmptyName",
         .call = [] { return getParam(""); },
         .answer = {0, {1440}},
         .calls = kReadsPacketSize},
    });

/// A name that selects a parameter, shown by the look-up that follows.
Row getSelects(const std::string& behaviour, const std::string& name, double value,
               const std::string& parameter)
{
    return {.behaviour = behaviour,
            .call = [=] { return getParam(name); },
            .answer = {0, {value}},
            .calls = {"Get " + parameter, parameter + ".GetValue", "Sleep 100"}};
}

Row setSelects(const std::string& behaviour, const std::string& name, const std::string& parameter)
{
    return {.behaviour = behaviour,
            .call = [=] { return setParam(name, 64); },
            .answer = {0, {}},
            .calls = {"log setStreamParameter " + name + " 64", "Get " + parameter,
                      parameter + ".SetValue 64", "Sleep 100"}};
}

Row getFails(const std::string& behaviour, const std::string& name)
{
    return {.behaviour = behaviour,
            .call = [=] { return getParam(name); },
            .answer = {-1, {kUntouched}},
            .calls = {}};
}

Row setFails(const std::string& behaviour, const std::string& name)
{
    return {.behaviour = behaviour,
            .call = [=] { return setParam(name, 64); },
            .answer = {-1, {}},
            .calls = {"log setStreamParameter " + name + " 64"}};
}

TELVO_ACCESSORS(
    ParameterName,
    Rows{
        getSelects("GetIgnoresCase", "requesttimeout", 1100, "stream/RequestTimeout"),
        getSelects("GetTakesTheFirstOfTwoHeartbeats", "Heartbeat", 3000, "GevHeartbeatTimeout"),
        getSelects("GetTakesTheIntervalByALongerPrefix", "heartbeati", 1000,
                   "link/HeartbeatInterval"),
        getSelects("GetTakesTheImageTimeoutForDefault", "Default", 1100,
                   "stream/DefaultImageTimeout"),
        getSelects("GetTakesTheAnswerTimeoutForA", "a", 1000, "link/AnswerTimeout"),
        getSelects("GetTakesResendsForM", "M", 0, "stream/MaximumPendingResends"),
        getFails("GetRefusesALongerName", "PacketTimeouts"),
        getFails("GetRefusesAnUnknownName", "Width"),
        setSelects("SetIgnoresCase", "packettimeout", "stream/PacketTimeout"),
        setSelects("SetTakesTheIntervalByALongerPrefix", "HEARTBEATI", "link/HeartbeatInterval"),
        setFails("SetRefusesALongerName", "PacketTimeouts"),
        setFails("SetRefusesAnUnknownName", "Width"),
        setFails("SetRefusesTheOutputDelay", "OutputInterPacketDelay"),
        setFails("SetRefusesTheDefaultDelay", "DefaultInterPacketDelay"),
        setFails("SetRefusesTheDefaultDataRate", "DefaultOutputDataRate"),
        {.behaviour = "SetTakesTheTimeoutForHeartbeat",
         .call = [] { return setParam("Heartbeat", 5000); },
         .answer = {0, {}},
         .calls = {"log setStreamParameter Heartbeat 5000", "Get link/DefaultHeartbeatTimeout",
                   "link/DefaultHeartbeatTimeout.SetValue 5000", "Sleep 100",
                   "Get GevHeartbeatTimeout", "GevHeartbeatTimeout.SetValue 5000", "Sleep 100"}},
        {.behaviour = "SetTakesTheInterPacketDelayForI",
         .call = [] { return setParam("i", 9); },
         .answer = {0, {}},
         .calls = {"log setStreamParameter i 9", "Get GevSCPD", "GevSCPD.SetValue 9", "Sleep 100",
                   "log -- GEN setInterPacketDelay 9"}},
    });

class LinkSettingsTest : public GrabberTest
{
};

TEST_F(LinkSettingsTest, AreTheDefaultsWithoutTheHostsSettings)
{
    ASSERT_EQ(connect(), 0);
    ASSERT_EQ(initialize(), 0);
    s.forget();
    EXPECT_EQ(getParam("DefaultInterPacketDelay"), (Answer{0, {2000}}));
    EXPECT_EQ(getParam("OutputInterPacketDelay"), (Answer{0, {0}}));
    EXPECT_EQ(getParam("DefaultOutputDataRate"), (Answer{0, {3}}));
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(LinkSettingsTest, AreTheHostsAndStayAsTheyAre)
{
    TelvoConnectionSettings settings{};
    settings.useSettings = 1;
    settings.defaultInterPacketDelay = 1234;
    settings.outputInterPacketDelay = 567;
    settings.outputDataRate = 8;
    ASSERT_EQ(connect(), 0);
    ASSERT_EQ(initialize(settings), 0);
    setParam("InterPacketDelay", 4000);
    set(expSetOutputDatarate, 2);
    s.forget();
    EXPECT_EQ(getParam("DefaultInterPacketDelay"), (Answer{0, {1234}}));
    EXPECT_EQ(getParam("outputinter"), (Answer{0, {567}}));
    EXPECT_EQ(getParam("DefaultO"), (Answer{0, {8}}));
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TELVO_ACCESSORS(
    ParameterBrowser,
    Rows{
        {.behaviour = "ShowsTheDevicesFeatures",
         .call =
             [] {
                 return Answer{expShowGEVParams(kCamera), {}};
             },
         .answer = {0, {}},
         .calls = {"log Show GEV Params Window.", "PvGenBrowserWnd.SetGenParameterArray device",
                   "PvGenBrowserWnd.ShowModal no parent", "PvGenBrowserWnd.Close",
                   "PvGenBrowserWnd destroyed"}},
        {.behaviour = "ShowsTheStreamsParameters",
         .call =
             [] {
                 return Answer{expShowStreamParams(kCamera), {}};
             },
         .answer = {0, {}},
         .calls = {"log Show Stream Params Window.", "PvGenBrowserWnd.SetGenParameterArray stream",
                   "PvGenBrowserWnd.ShowModal no parent", "PvGenBrowserWnd.Close",
                   "PvGenBrowserWnd destroyed"}},
        {.behaviour = "ReportsNothingWhenItIsCancelled",
         .call =
             [] {
                 return Answer{expShowGEVParams(kCamera), {}};
             },
         .answer = {0, {}},
         .calls = {"log Show GEV Params Window.", "PvGenBrowserWnd.SetGenParameterArray device",
                   "PvGenBrowserWnd.ShowModal no parent", "PvGenBrowserWnd.Close",
                   "PvGenBrowserWnd destroyed"},
         .script = [](StandIn& s) { s.answer("PvGenBrowserWnd.ShowModal", {Code::Aborted}); }},
    });

} // namespace
