/// What a host does besides pictures: settings in files, user sets, flash card, names, addresses,
/// the serial line, and several commands over one connection.
#include "CameraTest.h"

#include "../writers/TemporaryFolder.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <thread>

namespace
{

using camera::FeatureId;
using testing::HasSubstr;

using SettingsFile = CameraTest;

void write(const std::filesystem::path& file, const std::string& text)
{
    std::ofstream(file) << text;
}

TEST_F(SettingsFile, BringsACameraBackToItsSettings)
{
    const TemporaryFolder folder;
    const std::string file = folder / "settings.json";
    camera::CameraOptions options = quickCamera();
    options.settings[FeatureId::ExposureTimeRaw] = 700;
    options.settings[FeatureId::SyncInEnable] = 1;
    switchOn(options);
    EXPECT_THAT(run({"settings", "save", file}).output, HasSubstr("settings: " + file));
    EXPECT_EQ(runProgram({"/usr/bin/python3", "-m", "json.tool", file}).exitStatus, 0);

    switchOn();
    const ToolOutcome loaded = run({"settings", "load", "--strict", file});
    EXPECT_EQ(loaded.exitStatus, 0) << loaded.errors;
    EXPECT_THAT(loaded.output, HasSubstr("settings are as in the file"));
    EXPECT_EQ(value(FeatureId::ExposureTimeRaw), 700);
    EXPECT_EQ(value(FeatureId::SyncInEnable), 1);
}

TEST_F(SettingsFile, IsReplacedOnlyOnDemand)
{
    const TemporaryFolder folder;
    const std::string file = folder / "settings.json";
    write(file, "mine");
    switchOn();
    const ToolOutcome refused = run({"settings", "save", file});
    EXPECT_EQ(refused.exitStatus, 1);
    EXPECT_THAT(refused.errors, HasSubstr(file + " is there already; --force replaces it"));
    EXPECT_EQ(run({"settings", "save", "--force", file}).exitStatus, 0);
}

TEST_F(SettingsFile, WithAnErrorChangesNothing)
{
    const TemporaryFolder folder;
    const std::string file = folder / "settings.json";
    switchOn();
    const auto load = [&](const std::string& text) {
        write(file, text);
        return run({"settings", "load", file});
    };
    const ToolOutcome unknown = load(R"({"settings": {"gain": 3, "exposur": 5}})");
    EXPECT_EQ(unknown.exitStatus, 2);
    EXPECT_THAT(unknown.errors, HasSubstr("there is no setting 'exposur'"));
    const ToolOutcome value = load(R"({"settings": {"gain": 3, "exposure": "long"}})");
    EXPECT_EQ(value.exitStatus, 2);
    EXPECT_THAT(value.errors, HasSubstr("'long' is no value of exposure"));
    const ToolOutcome unit =
        load(R"({"settings": {"gain": 3, "exposure": {"value": 5, "unit": "ms"}}})");
    EXPECT_EQ(unit.exitStatus, 1);
    EXPECT_EQ(unit.errors, "telvo: exposure is in ms in the file, the camera takes us; "
                           "write it so into the file\n");
    EXPECT_EQ(load("[]").exitStatus, 1);
    EXPECT_EQ(load("{").exitStatus, 1);
    EXPECT_EQ(CameraTest::value(FeatureId::GainRaw), 0);
}

using UserSet = CameraTest;

TEST_F(UserSet, IsSavedForTheNextPowerOn)
{
    const TemporaryFolder folder;
    camera::CameraOptions options = quickCamera();
    options.stateFile = folder / "state";
    switchOn(options);
    EXPECT_EQ(run({"set", "exposure=123"}).exitStatus, 0);
    EXPECT_EQ(run({"userset", "save"}).exitStatus, 0);
    camera().stop();
    switchOn(options);
    EXPECT_EQ(value(FeatureId::ExposureTimeRaw), 123);
    EXPECT_EQ(run({"userset", "show"}).output,
              "in use          UserSet1\nafter power-on  UserSet1\n");
}

TEST_F(UserSet, IsLoadedAndTheSameOneStaysInUse)
{
    switchOn();
    EXPECT_EQ(run({"shell"}, "set exposure=123\nuserset save\nset exposure=456\n").exitStatus, 0);
    const ToolOutcome loaded = run({"userset", "load"});
    EXPECT_EQ(loaded.exitStatus, 0) << loaded.errors;
    EXPECT_EQ(value(FeatureId::ExposureTimeRaw), 123);
    EXPECT_EQ(run({"userset", "load", "Default"}).exitStatus, 0);
    EXPECT_NE(value(FeatureId::ExposureTimeRaw), 123);
    EXPECT_EQ(value(FeatureId::UserSetSelector), 1);
    EXPECT_TRUE(isFree());

    const ToolOutcome unknown = run({"userset", "load", "Other"});
    EXPECT_EQ(unknown.exitStatus, 1);
    EXPECT_THAT(unknown.errors, HasSubstr("the camera has no user set 'Other'; "));
    EXPECT_EQ(value(FeatureId::UserSetSelector), 1);
}

TEST_F(UserSet, IsNotLoadedWhileTheCameraRecords)
{
    camera::CameraOptions options = quickCamera();
    options.recordAtPowerOn = true;
    options.settings[FeatureId::RecordMode] = camera::kRecordContinuous;
    switchOn(options);
    const ToolOutcome outcome = run({"userset", "load"});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("the camera is busy; "));
    EXPECT_EQ(value(FeatureId::CameraState), camera::kStateRecording);
}

using FlashCard = CameraTest;

camera::CameraOptions cameraThatCopies()
{
    camera::CameraOptions options = quickCamera();
    options.flashBusy = std::chrono::seconds(60);
    return options;
}

TEST_F(FlashCard, CopyIsEnded)
{
    switchOn(cameraThatCopies());
    const ToolOutcome other = run({"set", "exposure=100"});
    EXPECT_EQ(other.exitStatus, 1);
    EXPECT_THAT(other.errors, HasSubstr("'telvo flash stop'"));
    EXPECT_THAT(run({"state"}).output, HasSubstr("copying to the flash card"));
    const ToolOutcome outcome = run({"flash", "stop"});
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, "the copy to the flash card was ended\n");
    EXPECT_EQ(value(FeatureId::CameraState), camera::kStateIdle);
}

TEST_F(FlashCard, CopyIsFollowedToItsEnd)
{
    camera::CameraOptions options = quickCamera();
    options.memoryBytes = 50 * 64 * 48;
    options.flashBytesPerSecond = 1'000'000;
    options.recordAtPowerOn = true;
    options.settings[FeatureId::AcquisitionFrameRateRaw] = 1000;
    switchOn(options);
    ASSERT_TRUE(becomes([this] { return value(FeatureId::CameraState) == camera::kStateIdle; }));
    const ToolOutcome outcome = run({"flash", "start"});
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, "the recording is on the flash card\n");
    EXPECT_EQ(value(FeatureId::CameraState), camera::kStateIdle);
}

using CameraName = CameraTest;

TEST_F(CameraName, IsGiven)
{
    switchOn();
    EXPECT_EQ(run({"name", "left"}).output, "127.0.0.11 is now called 'left'\n");
    EXPECT_EQ(run({"name", "longer than the camera takes"}).exitStatus, 1);
}

using Serial = CameraTest;

TEST_F(Serial, LineIsAnswered)
{
    switchOn();
    const ToolOutcome outcome = run({"serial", ":GR07A8"});
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, ":07A800000000\n");
}

using ForceIp = CameraTest;

TEST_F(ForceIp, RefusesWhatIsNoAddress)
{
    switchOn();
    const ToolOutcome outcome = run({"force-ip", "1.2.3"});
    EXPECT_EQ(outcome.exitStatus, 2);
    EXPECT_EQ(outcome.errors, "telvo: '1.2.3' is no IPv4 address such as 192.168.0.10\n");
}

TEST_F(ForceIp, IsDoneWhereTheCameraHasTheAddress)
{
    switchOn();
    const ToolOutcome outcome = run({"force-ip", "127.0.0.11", "--mask", "255.0.0.0"});
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, "02:54:45:00:00:0b has 127.0.0.11 until its power-off\n");
}

class Shell : public CameraTest
{
};

TEST_F(Shell, ConnectsOnceForAllItsCommands)
{
    switchOn();
    const std::uint64_t before = camera().log().counters().commands;
    const ToolOutcome one = run({"shell"}, "set exposure=100\n");
    ASSERT_EQ(one.exitStatus, 0) << one.errors;
    const std::uint64_t connecting = camera().log().counters().commands - before;
    const ToolOutcome outcome = run({"shell"}, "# a script\n"
                                               "set exposure=200\n"
                                               "get exposure\n"
                                               "set exposure=300\n"
                                               "record --frames 5 --fps 200\n"
                                               "get exposure\n"
                                               "exit\n"
                                               "get nothing\n");
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.errors;
    EXPECT_THAT(outcome.output, HasSubstr("exposure=200 us\nexposure=200 us\nexposure=300 us\n"));
    EXPECT_THAT(outcome.output, HasSubstr("recorded "));
    // Several times as much is done in less than twice the commands.
    EXPECT_LT(camera().log().counters().commands - before, 3 * connecting);
    EXPECT_TRUE(isFree());
}

TEST_F(Shell, EndsAtTheFirstCommandOfAScriptThatFails)
{
    switchOn();
    const ToolOutcome outcome = run({"shell"}, "get exposur\nget exposure\n");
    EXPECT_EQ(outcome.exitStatus, 2);
    EXPECT_EQ(outcome.output, "");
}

TEST_F(Shell, EndsWithASignalAndLeavesTheCameraFree)
{
    switchOn();
    ToolProcess tool(forCamera({"shell"}), std::nullopt);
    tool.type("set exposure=100\n");
    ASSERT_TRUE(becomes([this] { return value(FeatureId::ExposureTimeRaw) == 100; }));
    EXPECT_FALSE(isFree());
    tool.signal(SIGTERM);
    EXPECT_EQ(tool.wait().exitStatus, 1);
    EXPECT_TRUE(isFree());
}

} // namespace
