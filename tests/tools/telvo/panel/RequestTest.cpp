#include "Request.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace telvo;
using testing::HasSubstr;
using testing::Pair;

/// The command of a request that is right.
template <typename Command>
Command commandOf(const std::string& text)
{
    const auto parsed = parseRequest(text);
    if (const auto* const bad = std::get_if<BadRequest>(&parsed)) {
        ADD_FAILURE() << bad->reason;
        return {};
    }
    const auto& what = std::get<Request>(parsed).what;
    if constexpr (std::is_constructible_v<PanelCommand, Command>) {
        return std::get<Command>(std::get<PanelCommand>(what));
    } else {
        EXPECT_EQ(std::get<ForCamera>(what).camera, "c");
        return std::get<Command>(std::get<ForCamera>(what).command);
    }
}

BadRequest badRequest(const std::string& text)
{
    const auto parsed = parseRequest(text);
    const auto* const bad = std::get_if<BadRequest>(&parsed);
    EXPECT_NE(bad, nullptr) << text;
    return bad == nullptr ? BadRequest{} : *bad;
}

TEST(PanelRequest, IsReadWithItsNumber)
{
    const auto parsed = parseRequest(R"({"id": 9007199254740991, "do": "hello"})");
    EXPECT_EQ(std::get<Request>(parsed).id, 9007199254740991);
}

TEST(PanelRequest, TakesValuesAsTextsOfACommandLine)
{
    const auto request = commandOf<SetRequest>(
        R"({"id":1,"do":"set","camera":"c","values":{"exposure":250,"gain":1.5,"sync-in":true,"record-mode":"single"}})");
    EXPECT_THAT(request.values, testing::UnorderedElementsAre(
                                    Pair("exposure", "250"), Pair("gain", "1.5"),
                                    Pair("sync-in", "on"), Pair("record-mode", "single")));
}

TEST(PanelRequest, TakesAPartOfAPicture)
{
    const auto request = commandOf<FrameRequest>(
        R"({"id":1,"do":"frame","camera":"c","sequence":2,"frame":300,"width":640,"raw":true,"keep":true,)"
        R"("colour":"GB","region":{"x":1,"y":2,"width":3,"height":4}})");
    EXPECT_EQ(request.sequence, 2U);
    EXPECT_EQ(request.frame, 300U);
    EXPECT_TRUE(request.keep);
    EXPECT_EQ(
        request.wish,
        (PictureWish{.width = 640, .region = Region{1, 2, 3, 4}, .isRaw = true, .colour = "GB"}));
}

TEST(PanelRequest, TakesHowToRecord)
{
    const auto request = commandOf<ArmRequest>(
        R"({"id":1,"do":"arm","camera":"c","mode":"ring","trigger":"window","sequences":4,"pre":"40%","post":200,)"
        R"("seconds":1.5,"window":{"x":1,"y":2,"width":3,"height":4},"threshold":100,"condition":2})");
    EXPECT_EQ(request.mode, "ring");
    EXPECT_EQ(request.trigger, "window");
    EXPECT_EQ(request.sequences, 4U);
    EXPECT_EQ(request.pre, "40%");
    EXPECT_EQ(request.post, "200");
    EXPECT_EQ(request.seconds, 1.5);
    EXPECT_EQ(request.window, (Region{1, 2, 3, 4}));
    EXPECT_EQ(request.threshold, 100U);
    EXPECT_EQ(request.condition, 2U);
    EXPECT_EQ(request.frames, std::nullopt);
}

TEST(PanelRequest, TakesADownload)
{
    const auto request = commandOf<DownloadRequest>(
        R"({"id":1,"do":"download","camera":"c","sequence":0,"first":10,"count":20,"format":"tiff","name":"run 1"})");
    EXPECT_EQ(request.first, 10U);
    EXPECT_EQ(request.count, 20U);
    EXPECT_EQ(request.every, 1U);
    EXPECT_EQ(request.format, "tiff");
    EXPECT_EQ(request.name, "run 1");
}

TEST(PanelRequest, IsRefusedWhereItIsNoJson)
{
    for (const char* const text : {"", "{", "hello", "{\"id\":1,}", "\xFF\xFE", "{\"id\":1}{}"}) {
        EXPECT_EQ(badRequest(text).reason, "this is no JSON") << text;
        EXPECT_EQ(badRequest(text).id, std::nullopt);
    }
}

TEST(PanelRequest, IsRefusedWhereItIsNoObjectWithANumber)
{
    for (const char* const text :
         {"null", "[]", "1", "{}", R"({"do":"hello"})", R"({"id":-1,"do":"hello"})",
          R"({"id":1.5,"do":"hello"})", R"({"id":"1","do":"hello"})",
          R"({"id":9007199254740992,"do":"hello"})"}) {
        EXPECT_EQ(badRequest(text).id, std::nullopt) << text;
    }
}

TEST(PanelRequest, IsAnsweredUnderItsNumberWhereTheRestIsWrong)
{
    EXPECT_EQ(badRequest(R"({"id":7})").id, 7);
    EXPECT_THAT(badRequest(R"({"id":7,"do":"explode"})").reason, HasSubstr("'explode'"));
    EXPECT_EQ(badRequest(R"({"id":7,"do":"explode"})").id, 7);
}

TEST(PanelRequest, IsRefusedForWhatIsMissingUnknownOrOfAnotherType)
{
    for (
        const char* const rest :
        {R"("do":"open")",
         R"("do":"open","camera":1)",
         R"("do":"open","camera":"c","extra":1)",
         R"("do":"live","camera":"c")",
         R"("do":"live","camera":"c","on":1)",
         R"("do":"set","camera":"c","values":[])",
         R"("do":"set","camera":"c","values":{"exposure":null})",
         R"("do":"set","camera":"c","values":{"exposure":{}})",
         R"("do":"frame","camera":"c","sequence":0,"frame":-1)",
         R"("do":"frame","camera":"c","sequence":0,"frame":4294967296)",
         R"("do":"frame","camera":"c","sequence":0,"frame":1e3)",
         R"("do":"frame","camera":"c","sequence":0,"frame":0,"region":{"x":0,"y":0,"width":1})",
         R"("do":"frame","camera":"c","sequence":0,"frame":0,"colour":"XX")",
         R"("do":"curve","camera":"c","sequence":0,"points":1)",
         R"("do":"curve","camera":"c","sequence":0,"points":4097)",
         R"("do":"arm","camera":"c","mode":"round","trigger":"none")",
         R"("do":"arm","camera":"c","mode":"ring","trigger":"none","seconds":1e300)",
         R"("do":"download","camera":"c","sequence":0,"first":0,"count":0,"format":"raw","name":"a")",
         R"("do":"download","camera":"c","sequence":0,"first":0,"count":1,"format":"exe","name":"a")",
         R"("do":"loadSettings","camera":"c","file":"settings.json")",
         R"("do":"cancel")",
         R"("do":"hello","camera":"c")"}) {
        EXPECT_EQ(badRequest(std::string(R"({"id":7,)") + rest + "}").id, 7) << rest;
    }
}

TEST(PanelRequest, IsRefusedWhereItIsDeeperThanAnyThatMakesSense)
{
    const std::string deep = std::string(30'000, '[') + std::string(30'000, ']');
    EXPECT_THAT(
        badRequest(R"({"id":1,"do":"loadSettings","camera":"c","file":{"a":)" + deep + "}}").reason,
        HasSubstr("within one another"));
}

} // namespace
