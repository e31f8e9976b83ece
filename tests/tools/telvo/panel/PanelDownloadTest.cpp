#include "PanelProcess.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace
{

namespace fs = std::filesystem;
using camera::FeatureId;
using testing::HasSubstr;

std::string contents(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A camera that has recorded, and a page.
class PanelDownload : public PanelTest
{
  protected:
    void begin(camera::CameraOptions options = quickCamera())
    {
        options.recordAtPowerOn = true;
        options.memoryBytes = std::uint64_t{2} << 20U; // full in a moment
        options.settings[FeatureId::AcquisitionFrameRateRaw] = 1000;
        switchOn(options);
        ASSERT_TRUE(
            becomes([this] { return value(FeatureId::CameraState) == camera::kStateIdle; }));
        openPage();
    }
    Json download(const std::string& name, const std::string& format, std::uint32_t first = 0,
                  std::uint32_t count = 10)
    {
        return ask("download", {{"sequence", 0},
                                {"first", first},
                                {"count", count},
                                {"format", format},
                                {"name", name}});
    }
    Json awaitEnd(const Json& started)
    {
        EXPECT_EQ(started["ok"], true) << started.dump();
        return page->awaitEvent("download", [&](const Json& event) {
            return event["job"] == started["job"] && event["state"] != "running";
        });
    }
    std::string truth(std::uint32_t first, std::uint32_t count)
    {
        std::string bytes;
        for (std::uint32_t i = first; i < first + count; ++i) {
            const std::vector<std::uint8_t> frame = camera().recordedBytes(0, i);
            bytes.append(frame.begin(), frame.end());
        }
        return bytes;
    }
};

TEST_F(PanelDownload, BringsTheMarkedRangeVerified)
{
    begin();
    const Json end = awaitEnd(download("run 1", "raw", 5, 20));
    EXPECT_EQ(end["state"], "done") << end.dump();
    EXPECT_EQ(end["name"], "run 1.raw");
    EXPECT_EQ(end["frames"], 20);
    EXPECT_EQ(end["verdict"]["whole"], true);
    EXPECT_EQ(end["verdict"]["gaps"], Json::array());
    EXPECT_EQ(contents(folder.path() / "run 1.raw"), truth(5, 20));
    EXPECT_EQ(page->awaitState("idle")["live"], false);
}

TEST_F(PanelDownload, ListsWhatItBroughtAndGivesItToTheBrowser)
{
    begin();
    awaitEnd(download("run 1", "raw"));
    awaitEnd(download("pictures", "png"));
    const Json rows = page->ask({{"do", "downloads"}})["files"];
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0]["name"], "pictures");
    EXPECT_EQ(rows[0]["format"], "png");
    EXPECT_EQ(rows[0]["url"], nullptr);
    EXPECT_EQ(rows[1]["name"], "run 1.raw");
    EXPECT_EQ(rows[1]["frames"], 10);
    EXPECT_EQ(rows[1]["whole"], true);
    WebClient browser(port());
    EXPECT_EQ(browser.get("/download/run%201.raw").body, truth(0, 10));
    EXPECT_EQ(browser.get("/download/run%201.raw.json").status, 200);
}

TEST_F(PanelDownload, GivesNothingThatItDidNotBring)
{
    begin();
    std::ofstream(folder.path() / "secret.txt") << "secret";
    fs::create_symlink("/etc/passwd", folder.path() / "link");
    std::ofstream(folder.path() / "link.json") << "{\n  \"format\": \"telvo-recording\"}";
    std::ofstream(folder.path() / "settings.json") << "{}";
    std::ofstream(folder.path() / "notes.txt") << "notes";
    std::ofstream(folder.path() / "notes.txt.json") << R"({"format": "notes"})";
    WebClient browser(port());
    for (const char* const name :
         {"secret.txt", "link", "settings.json", "notes.txt", "notes.txt.json", "..%2fsecret.txt",
          "%2e%2e", "../secret.txt", ".", ""}) {
        EXPECT_EQ(browser.get(std::string("/download/") + name).status, 404) << name;
    }
}

TEST_F(PanelDownload, WritesNowhereButIntoItsFolder)
{
    begin();
    for (const char* const name : {"../run", "/tmp/run", "a/b", "a\\b", ".hidden", "", "C:run",
                                   "run\n", "run\xC3\xA4", " run", "run."}) {
        const Json answer = download(name, "raw");
        EXPECT_EQ(answer["ok"], false) << name;
        EXPECT_THAT(answer["error"], HasSubstr("name takes")) << name;
    }
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST_F(PanelDownload, ReplacesNothing)
{
    begin();
    std::ofstream(folder.path() / "run.raw") << "mine";
    EXPECT_EQ(download("run", "raw")["ok"], false);
    EXPECT_EQ(contents(folder.path() / "run.raw"), "mine");
}

TEST_F(PanelDownload, RefusesFramesThatThereAreNot)
{
    begin();
    const Json end = awaitEnd(download("run", "raw", 1'000'000, 10));
    EXPECT_EQ(end["state"], "failed");
    EXPECT_TRUE(fs::is_empty(folder.path()));
    EXPECT_EQ(awaitEnd(download("run", "raw"))["state"], "done"); // and goes on
}

TEST_F(PanelDownload, IsCancelledAndAnswersMeanwhile)
{
    camera::CameraOptions options = quickCamera();
    options.linkRate = 2'000'000; // seconds for all of it
    begin(options);
    const Json started = download("run", "raw", 0, 600);
    ASSERT_EQ(started["ok"], true) << started.dump();
    page->awaitEvent("download");
    EXPECT_EQ(page->state(camera().macText())["state"], "downloading");
    EXPECT_THAT(ask("live", {{"on", true}})["error"], HasSubstr("a download is running"));
    EXPECT_THAT(ask("close")["error"], HasSubstr("a download is running"));
    EXPECT_EQ(ask("frame", {{"sequence", 0}, {"frame", 0}})["ok"], false);
    PanelClient late(port()); // is told of it, too
    EXPECT_EQ(late.awaitEvent("download")["job"], started["job"]);

    EXPECT_EQ(page->ask({{"do", "cancel"}, {"job", started["job"]}})["ok"], true);
    const Json end = awaitEnd(started);
    EXPECT_EQ(end["state"], "cancelled");
    EXPECT_EQ(page->ask({{"do", "cancel"}, {"job", started["job"]}})["ok"], false);
    page->awaitState("idle");
    // Nothing half of it is left; what had come whole by then is.
    const std::string kept = contents(folder.path() / "run.raw");
    EXPECT_EQ(kept, truth(0, static_cast<std::uint32_t>(kept.size() / (64 * 48))));
}

TEST_F(PanelDownload, EndsWithTheProgram)
{
    camera::CameraOptions options = quickCamera();
    options.linkRate = 2'000'000;
    begin(options);
    ASSERT_EQ(download("run", "raw", 0, 600)["ok"], true);
    page->awaitEvent("download");
    EXPECT_EQ(endPanel().exitStatus, 0);
    EXPECT_TRUE(isFree());
}

TEST_F(PanelDownload, ShowsAllFeaturesAndChangesOne)
{
    begin();
    const Json answer = ask("features");
    ASSERT_EQ(answer["ok"], true) << answer.dump();
    EXPECT_THAT(answer["tree"].dump(), HasSubstr("\"name\":\"ExposureTimeRaw\""));
    EXPECT_THAT(answer["tree"].dump(), HasSubstr("\"children\":["));
    EXPECT_EQ(page->state(camera().macText())["state"], "idle"); // connected again

    const Json changed = ask("setFeature", {{"name", "ExposureTimeRaw"}, {"value", "777"}});
    ASSERT_EQ(changed["ok"], true) << changed.dump();
    EXPECT_EQ(changed["feature"]["value"], "777");
    EXPECT_EQ(value(FeatureId::ExposureTimeRaw), 777);
    EXPECT_EQ(ask("setFeature", {{"name", "ExposureTimeRaw"}, {"value", "much"}})["ok"], false);
    EXPECT_THAT(ask("setFeature", {{"name", "Nonsense"}, {"value", "1"}})["error"],
                HasSubstr("no feature 'Nonsense'"));
    EXPECT_EQ(page->state(camera().macText())["state"], "idle");
    EXPECT_FALSE(isFree());
}

} // namespace
