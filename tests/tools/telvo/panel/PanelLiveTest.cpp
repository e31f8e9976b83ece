#include "PanelProcess.h"

namespace
{

using camera::FeatureId;
using testing::HasSubstr;

using PanelLive = PanelTest;

TEST_F(PanelLive, ShowsPicturesThatChange)
{
    begin();
    expectDone("preview", {{"width", 64}});
    expectDone("live", {{"on", true}});
    const PanelPicture first = page->awaitPicture();
    EXPECT_EQ(first.header["kind"], "live");
    EXPECT_EQ(first.header["camera"], mac());
    EXPECT_EQ(first.header["format"], "jpeg");
    EXPECT_EQ(first.header["pictureWidth"], 64);
    EXPECT_EQ(first.header["pictureHeight"], 48);
    EXPECT_EQ(first.header["histogram"].size(), 256U);
    EXPECT_EQ(first.bytes.substr(0, 2), "\xFF\xD8");
    expectDone("seen", {{"number", first.header["number"]}});
    const PanelPicture second = page->awaitPicture();
    EXPECT_GT(second.header["number"], first.header["number"]);
    EXPECT_NE(second.header["counter"], first.header["counter"]);
    EXPECT_NE(second.bytes, first.bytes);
    EXPECT_EQ(value(FeatureId::CameraState), camera::kStateLive);
}

TEST_F(PanelLive, NeverQueuesPicturesForASlowPage)
{
    begin();
    expectDone("preview", {{"width", 64}});
    expectDone("live", {{"on", true}});
    const PanelPicture first = page->awaitPicture();
    page->awaitState("live");
    // While this page does not say that it has seen it, another one gets ten.
    PanelClient quick(port());
    quick.ask({{"do", "preview"}, {"camera", mac()}, {"width", 64}});
    std::uint64_t newest = 0;
    for (int i = 0; i < 10; ++i) {
        newest = quick.awaitPicture().header["number"];
        quick.ask({{"do", "seen"}, {"camera", mac()}, {"number", newest}});
    }
    EXPECT_EQ(page->picturesKept(), 0U);
    expectDone("seen", {{"number", first.header["number"]}});
    EXPECT_GE(page->awaitPicture().header["number"], newest); // not the ones between
}

TEST_F(PanelLive, GivesTheValuesOfThePixels)
{
    begin();
    expectDone("preview", {{"width", 1},
                           {"raw", true},
                           {"region", {{"x", 20}, {"y", 10}, {"width", 4}, {"height", 3}}}});
    expectDone("live", {{"on", true}});
    const PanelPicture picture = page->awaitPicture();
    EXPECT_EQ(picture.header["format"], "gray8");
    EXPECT_EQ(picture.header["width"], 4);
    EXPECT_EQ(picture.header["height"], 3);
    EXPECT_EQ(picture.bytes.size(), 12U);
}

TEST_F(PanelLive, EndsLivePicturesAndSaysSo)
{
    begin();
    expectDone("live", {{"on", true}});
    EXPECT_EQ(page->state(mac())["live"], true);
    expectDone("live", {{"on", false}});
    EXPECT_EQ(page->state(mac())["state"], "idle");
    EXPECT_EQ(page->state(mac())["live"], false);
    EXPECT_EQ(value(FeatureId::CameraState), camera::kStateIdle);
}

TEST_F(PanelLive, BringsASettingToTheCameraAndToEveryPage)
{
    begin();
    PanelClient other(port());
    const Json answer = ask("set", {{"values", {{"exposure", 777}}}});
    EXPECT_EQ(answer["outcomes"][0]["name"], "exposure");
    EXPECT_EQ(answer["outcomes"][0]["taken"], "777 us");
    EXPECT_EQ(answer["outcomes"][0]["asAsked"], true);
    EXPECT_EQ(value(FeatureId::ExposureTimeRaw), 777);
    const Json event = other.awaitEvent("settings");
    EXPECT_THAT(event["settings"].dump(), HasSubstr("777"));
}

TEST_F(PanelLive, TellsWhatTheCameraTookInPlaceOfAValue)
{
    begin();
    const Json answer = ask("set", {{"values", {{"width", 50000}}}});
    EXPECT_EQ(answer["ok"], true);
    EXPECT_EQ(answer["outcomes"][0]["asAsked"], false);
    EXPECT_THAT(answer["outcomes"][0]["note"], HasSubstr("instead of 50000"));
}

TEST_F(PanelLive, ChangesNothingWhereAnyValueIsWrong)
{
    begin();
    const std::int64_t before = value(FeatureId::ExposureTimeRaw);
    const Json answer = ask("set", {{"values", {{"exposure", 777}, {"nonsense", 1}}}});
    EXPECT_EQ(answer["ok"], false);
    EXPECT_THAT(answer["error"], HasSubstr("nonsense"));
    EXPECT_EQ(ask("set", {{"values", {{"exposure", 1.5}}}})["ok"], false);
    EXPECT_EQ(value(FeatureId::ExposureTimeRaw), before);
}

TEST_F(PanelLive, ChangesThePicturesPlaceWhileItIsLive)
{
    begin();
    expectDone("preview", {{"width", 64}});
    expectDone("live", {{"on", true}});
    const PanelPicture whole = page->awaitPicture();
    expectDone("set", {{"values", {{"width", 32}, {"height", 16}, {"offset-x", 16}}}});
    EXPECT_EQ(page->state(mac())["live"], true);
    EXPECT_EQ(page->state(mac())["width"], 32);
    expectDone("seen", {{"number", whole.header["number"]}});
    PanelPicture picture = page->awaitPicture();
    if (picture.header["pictureWidth"] == 64) { // was on its way
        expectDone("seen", {{"number", picture.header["number"]}});
        picture = page->awaitPicture();
    }
    EXPECT_EQ(picture.header["pictureWidth"], 32);
    EXPECT_EQ(picture.header["pictureHeight"], 16);
}

TEST_F(PanelLive, SavesSettingsAndTakesThemBack)
{
    begin();
    expectDone("set", {{"values", {{"exposure", 500}}}});
    const Json saved = ask("saveSettings")["file"];
    EXPECT_EQ(saved["settings"]["exposure"]["value"], 500);
    expectDone("set", {{"values", {{"exposure", 900}}}});
    expectDone("loadSettings", {{"file", saved}});
    EXPECT_EQ(value(FeatureId::ExposureTimeRaw), 500);
    EXPECT_EQ(ask("loadSettings", {{"file", {{"settings", {{"exposure", "much"}}}}}})["ok"], false);
    EXPECT_EQ(ask("loadSettings", {{"file", Json::object()}})["ok"], false);
    EXPECT_EQ(value(FeatureId::ExposureTimeRaw), 500);
}

TEST_F(PanelLive, LeavesTheCameraAsItIsWhenThePageCloses)
{
    begin();
    expectDone("live", {{"on", true}});
    page.reset();
    PanelClient next(port());
    EXPECT_EQ(next.awaitState("live")["live"], true);
    EXPECT_EQ(value(FeatureId::CameraState), camera::kStateLive);
}

TEST_F(PanelLive, ShowsALostLinkAndGoesOnWhenItIsBack)
{
    begin();
    expectDone("live", {{"on", true}});
    camera().stop();
    page->awaitState("lost");
    EXPECT_EQ(page->ask({{"do", "live"}, {"camera", mac()}, {"on", true}})["ok"], false);
    ASSERT_FALSE(camera().start());
    EXPECT_THAT(page->awaitState("idle")["text"], HasSubstr("the link is there again"));
    expectDone("live", {{"on", true}});
}

} // namespace
