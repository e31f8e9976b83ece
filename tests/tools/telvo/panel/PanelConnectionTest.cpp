#include "PanelProcess.h"

namespace
{

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

using PanelConnection = PanelTest;

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
    return message.bytes.find("\"state\":\"idle\"") != std::string::npos;
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
