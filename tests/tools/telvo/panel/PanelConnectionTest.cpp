#include "CameraControl.h"
#include "PanelProcess.h"

#include <algorithm>

namespace
{

using camera::FeatureId;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

using PanelConnection = PanelTest;

camera::CameraOptions cameraAt(const std::string& address, const std::string& mac)
{
    camera::CameraOptions options = quickCamera(address);
    options.mac = mac;
    return options;
}

/// Waits until the camera is listed at the address.
void awaitListed(PanelClient& page, const std::string& mac, const std::string& address, bool open)
{
    page.awaitEvent("cameras", [&](const Json& event) {
        return std::ranges::any_of(event["cameras"], [&](const Json& row) {
            return row["camera"] == mac && row["address"] == address && row["open"] == open;
        });
    });
}

constexpr const char* kOwn = "02:00:00:00:00:01";
constexpr const char* kStranger = "02:00:00:00:00:02";

// A link counts as lost after some heartbeats without an answer.
TEST_F(PanelConnection, IsMadeAgainWithTheSameCameraWhereverItIsThen)
{
    begin(cameraAt("127.0.0.11", kOwn));
    camera().stop();
    camera::VirtualCamera inItsPlace(cameraAt("127.0.0.11", kStranger));
    ASSERT_FALSE(inItsPlace.start());
    page->awaitState("lost");
    awaitListed(*page, kStranger, "127.0.0.11", false);

    camera::VirtualCamera moved(cameraAt("127.0.0.13", kOwn));
    ASSERT_FALSE(moved.start());
    EXPECT_THAT(page->awaitState("idle")["text"], HasSubstr("the link is there again"));
    awaitListed(*page, kOwn, "127.0.0.13", true);
    EXPECT_TRUE(::isFree(inItsPlace));
    expectDone("set", {{"values", {{"exposure", 777}}}});
    EXPECT_EQ(moved.value(FeatureId::ExposureTimeRaw), 777);
}

TEST_F(PanelConnection, IsMadeWhereACameraThatWasClosedIsNow)
{
    begin(cameraAt("127.0.0.11", kOwn));
    expectDone("close");
    camera().stop();
    camera::VirtualCamera moved(cameraAt("127.0.0.13", kOwn));
    ASSERT_FALSE(moved.start());
    page->ask({{"do", "search"}});
    awaitListed(*page, kOwn, "127.0.0.13", false);
    expectDone("open");
    EXPECT_FALSE(::isFree(moved));
}

/// A camera that the library has never seen.
camera::CameraOptions freshCamera()
{
    camera::CameraOptions options = quickCamera();
    options.userSetsPrepared = false;
    return options;
}

constexpr const char* kFirstUse = "the camera at 127.0.0.11 is used for the first time: its user "
                                  "set 1 is set to whole pictures, saved and made the default";

bool isIdle(const SocketMessage& message)
{
    return message.bytes.find(R"("state":"idle")") != std::string::npos;
}

// It is connected before there is a page, which is told all the same.
TEST_F(PanelConnection, TellsThatTheCameraIsUsedForTheFirstTime)
{
    switchOn(freshCamera());
    startPanel({"--camera", "127.0.0.11"});
    WebClient noPage(port()); // which does not say hello
    ASSERT_EQ(noPage.openSocket(noPage.origin()).status, 101);
    for (auto message = noPage.next(); message && !isIdle(*message); message = noPage.next()) {
        EXPECT_THAT(message->bytes, Not(HasSubstr("first time")));
    }
    PanelClient first(port());
    const Json told = first.awaitEvent("log");
    EXPECT_EQ(told["text"], kFirstUse);
    EXPECT_EQ(told["stays"], true);
    EXPECT_THAT(endPanel().errors, StartsWith(std::string("telvo: ") + kFirstUse));
}

} // namespace
