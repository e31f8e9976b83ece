#include "PanelProcess.h"

#include <csignal>

namespace
{

using testing::HasSubstr;

using PanelProgram = PanelTest;

TEST_F(PanelProgram, ServesThePageAndFindsTheCamera)
{
    switchOn();
    startPanel();
    WebClient browser(port());
    EXPECT_THAT(browser.get("/").body, HasSubstr("<html"));
    PanelClient client(port());
    const Json cameras = client.awaitEvent(
        "cameras", [](const Json& event) { return !event["cameras"].empty(); })["cameras"];
    ASSERT_EQ(cameras.size(), 1U);
    EXPECT_EQ(cameras[0]["camera"], camera().macText());
    EXPECT_EQ(cameras[0]["address"], "127.0.0.11");
    EXPECT_EQ(cameras[0]["free"], true);
    EXPECT_EQ(cameras[0]["open"], false);
}

TEST_F(PanelProgram, ConnectsACameraAndLetsItGo)
{
    switchOn();
    startPanel();
    PanelClient client(port());
    const std::string mac = client.awaitCamera();
    EXPECT_TRUE(client.ask({{"do", "open"}, {"camera", mac}})["ok"]);
    EXPECT_EQ(client.state(mac)["state"], "idle");
    EXPECT_FALSE(isFree());
    EXPECT_TRUE(client.ask({{"do", "close"}, {"camera", mac}})["ok"]);
    EXPECT_EQ(client.state(mac)["state"], "closed");
    EXPECT_TRUE(isFree());
}

TEST_F(PanelProgram, ConnectsTheCamerasOfTheCommandLine)
{
    begin();
    EXPECT_FALSE(isFree());
}

TEST_F(PanelProgram, TellsEveryPageTheSame)
{
    switchOn();
    startPanel({"--camera", "127.0.0.11"});
    PanelClient first(port());
    PanelClient second(port());
    first.awaitState("idle");
    second.awaitState("idle");
    second.ask({{"do", "close"}, {"camera", camera().macText()}});
    first.awaitState("closed");
}

TEST_F(PanelProgram, AnswersWhatIsWrongAndGoesOn)
{
    startPanel();
    PanelClient client(port());
    EXPECT_THAT(client.ask({{"do", "explode"}, {"camera", "x"}})["error"], HasSubstr("'explode'"));
    EXPECT_THAT(client.ask({{"do", "open"}, {"camera", "02:00:00:00:00:01"}})["error"],
                HasSubstr("search for cameras first"));
    EXPECT_THAT(client.ask({{"do", "cancel"}, {"job", 1}})["error"], HasSubstr("no such job"));
    EXPECT_TRUE(client.ask({{"do", "downloads"}})["ok"]);
}

TEST_F(PanelProgram, DemandsATokenWhereOthersReachIt)
{
    startPanel({"--listen", "127.0.0.1"});
    ASSERT_EQ(token().size(), 32U);
    WebClient stranger(port());
    EXPECT_EQ(stranger.get("/").status, 403);
    EXPECT_EQ(stranger.get("/?token=00000000000000000000000000000000").status, 403);
    EXPECT_EQ(WebClient(port()).openSocket(stranger.origin()).status, 403);

    const HttpAnswer answer = stranger.get("/?token=" + token());
    EXPECT_EQ(answer.status, 303);
    EXPECT_THAT(answer.head, HasSubstr("Set-Cookie: telvo-panel-token=" + token()));
    const std::string cookie = "Cookie: telvo-panel-token=" + token() + "\r\n";
    EXPECT_EQ(stranger.get("/", cookie).status, 200);
    EXPECT_EQ(WebClient(port()).openSocket(stranger.origin(), cookie).status, 101);
}

TEST_F(PanelProgram, FailsBeforeItServesWhereItsFolderIsMissing)
{
    const ToolOutcome outcome = runTool({"panel", "--port", "0", "--folder", "/nowhere"});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.errors, "telvo: there is no folder /nowhere for downloads\n");
}

} // namespace
