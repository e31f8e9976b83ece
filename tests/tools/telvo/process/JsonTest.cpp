/// Results for programs: each command that reports prints JSON if asked.
#include "CameraTest.h"

#include "../writers/TemporaryFolder.h"

#include <nlohmann/json.hpp>
#include <sstream>

namespace
{

using camera::FeatureId;
using nlohmann::json;

/// What one command after the other printed.
std::vector<json> documents(const std::string& output)
{
    std::istringstream text(output);
    std::vector<json> all;
    while (text >> std::ws && text.good()) {
        all.emplace_back();
        text >> all.back();
    }
    return all;
}

using JsonOutput = CameraTest;

TEST_F(JsonOutput, ListsCameras)
{
    switchOn();
    const ToolOutcome found = runTool({"discover", "--json", "--interface", "lo"});
    EXPECT_EQ(json::parse(found.output), json::parse(R"([{
        "mac": "02:54:45:00:00:0b", "ip": "127.0.0.11", "manufacturer": "Telvo",
        "model": "TOVI1", "serial": "VC00000B", "name": "virtual camera", "interface": "lo",
        "inSubnet": true, "macConflict": false}])"));
    camera().stop();
    const ToolOutcome none =
        runTool({"discover", "--json", "--interface", "lo", "--timeout", "100"});
    EXPECT_EQ(none.exitStatus, 1);
    EXPECT_EQ(none.output, "[]\n");
}

TEST_F(JsonOutput, TellsWhatBecameOfASetting)
{
    const TemporaryFolder folder;
    const std::string file = folder / "settings.json";
    camera::CameraOptions options = quickCamera();
    options.memoryBytes = 50 * 64 * 48;
    options.flashBytesPerSecond = 1'000'000;
    options.recordAtPowerOn = true;
    options.settings[FeatureId::AcquisitionFrameRateRaw] = 1000;
    switchOn(options);
    ASSERT_TRUE(becomes([this] { return value(FeatureId::CameraState) == camera::kStateIdle; }));
    const ToolOutcome outcome = run({"shell"}, "settings save --json '" + file +
                                                   "'\n"
                                                   "settings load --json '" +
                                                   file +
                                                   "'\n"
                                                   "serial --json :GR07A8\n"
                                                   "userset save --json\n"
                                                   "userset load --json Default\n"
                                                   "flash start --json\n"
                                                   "flash stop --json\n"
                                                   "stop --json\n"
                                                   "force-ip --json 127.0.0.11 --mask 255.0.0.0\n"
                                                   "name --json left\n");
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.errors;
    const std::vector<json> all = documents(outcome.output);
    ASSERT_EQ(all.size(), 10U) << outcome.output;
    const int settings = all[0]["settings"];
    EXPECT_GT(settings, 10);
    EXPECT_EQ(all[0]["file"], file);
    EXPECT_EQ(all[1]["asInFile"], settings);
    EXPECT_EQ(all[1]["others"], json::object());
    EXPECT_EQ(all[2]["answer"], ":07A800000000");
    EXPECT_EQ(all[3]["saved"], true);
    EXPECT_EQ(all[4]["loaded"], "Default");
    EXPECT_EQ(all[5]["copied"], true);
    EXPECT_EQ(all[6]["wasCopying"], false);
    EXPECT_EQ(all[7], json::parse(R"([{"camera": "127.0.0.11", "wasRecording": false}])"));
    EXPECT_EQ(all[8]["ip"], "127.0.0.11");
    EXPECT_EQ(all[9], json::parse(R"({"camera": "127.0.0.11", "name": "left"})"));
}

TEST_F(JsonOutput, TellsOfARecordingThatWasEnded)
{
    camera::CameraOptions options = quickCamera();
    options.recordAtPowerOn = true;
    options.settings[FeatureId::RecordMode] = camera::kRecordContinuous;
    switchOn(options);
    const json stopped = json::parse(run({"stop", "--json"}).output).at(0);
    EXPECT_EQ(stopped["wasRecording"], true);
    EXPECT_GT(stopped["frames"], 0);
    EXPECT_EQ(stopped["width"], 64);
    EXPECT_EQ(stopped["height"], 48);
}

} // namespace
