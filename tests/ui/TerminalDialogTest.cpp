#include "TerminalHost.h"

#include "TelvoDll.h"
#include "VirtualCamera.h"

#include <gtest/gtest.h>

namespace
{

using camera::CameraOptions;
using camera::FeatureId;
using camera::VirtualCamera;

CameraOptions cameraAt(const std::string& address)
{
    CameraOptions options;
    options.address = address;
    options.userSetsPrepared = true;
    return options;
}

class TerminalFinder : public testing::Test
{
  protected:
    void SetUp() override { ASSERT_FALSE(first.start()); }

    VirtualCamera first{cameraAt("127.0.0.11")};
    VirtualCamera second{cameraAt("127.0.0.12")};
};

TEST_F(TerminalFinder, ConnectsTheCameraThatTheUserChooses)
{
    ASSERT_FALSE(second.start());
    TerminalHost host({"finder"});
    ASSERT_TRUE(host.shows("02:54:45:00:00:0b"));
    ASSERT_TRUE(host.shows("02:54:45:00:00:0c"));
    EXPECT_TRUE(host.shows("VC00000C"));
    EXPECT_TRUE(host.shows("free"));
    host.press(kDown);
    ASSERT_TRUE(host.highlights("02:54:45:00:00:0b"));
    host.press(kDown);
    ASSERT_TRUE(host.highlights("02:54:45:00:00:0c"));
    host.press(kEnter);
    EXPECT_TRUE(host.shows("connect: 0")) << host.output();
    EXPECT_TRUE(host.shows("camera: 02:54:45:00:00:0c 127.0.0.12")) << host.output();
    EXPECT_EQ(host.exitCode(), 0);
    EXPECT_TRUE(host.isTerminalRestored());
}

TEST_F(TerminalFinder, EndsWithoutASelectionWhenTheUserCancels)
{
    for (const char* const key : {"q", kEscape, kCtrlC}) {
        TerminalHost host({"finder"});
        ASSERT_TRUE(host.shows("02:54:45:00:00:0b"));
        EXPECT_FALSE(host.isTerminalRestored());
        host.press(key);
        EXPECT_TRUE(host.shows("connect: -1")) << host.output();
        EXPECT_EQ(host.exitCode(), 1);
        EXPECT_TRUE(host.isTerminalRestored());
    }
}

TEST_F(TerminalFinder, DoesNotConfirmWithoutASelection)
{
    TerminalHost host({"finder"});
    ASSERT_TRUE(host.shows("02:54:45:00:00:0b"));
    host.press(kEnter);
    host.press(kDown); // still open
    EXPECT_TRUE(host.highlights("02:54:45:00:00:0b"));
}

TEST_F(TerminalFinder, ShowsACameraThatComesWhileItIsOpen)
{
    TerminalHost host({"finder"});
    ASSERT_TRUE(host.shows("02:54:45:00:00:0b"));
    ASSERT_FALSE(second.start());
    host.press("r");
    EXPECT_TRUE(host.shows("02:54:45:00:00:0c"));
}

TEST_F(TerminalFinder, ShowsThatACameraIsInUse)
{
    TelvoConnectionSettings settings{};
    ASSERT_EQ(expConnectGrabber(first.macText().c_str(), "127.0.0.11", 1, &settings, 1), 0);
    ASSERT_EQ(expSetStreamParam("HeartbeatTimeout", 60'000, 1), 0); // however busy the machine
    TerminalHost host({"finder"});
    EXPECT_TRUE(host.shows("in use"));
    host.press(kDown);
    EXPECT_TRUE(host.shows("Another program controls this camera."));
    host.press("q");
    EXPECT_EQ(host.exitCode(), 1);
    EXPECT_EQ(expDisconnectGrabber(1), 0);
}

TEST_F(TerminalFinder, SaysThatNoCameraAnswers)
{
    first.stop();
    TerminalHost host({"finder"});
    EXPECT_TRUE(host.shows("Searching..."));
    EXPECT_TRUE(host.shows("No camera answers."));
}

TEST_F(TerminalFinder, EndsWithoutASelectionWhereThereIsNoTerminal)
{
    TerminalHost host({"finder"}, TerminalHost::Place::NoTerminal);
    EXPECT_TRUE(host.shows("connect: -1")) << host.output();
    EXPECT_EQ(host.exitCode(), 1);
}

TEST_F(TerminalFinder, LeavesTheTerminalAloneInTheBackground)
{
    TerminalHost host({"finder"}, TerminalHost::Place::Background);
    EXPECT_TRUE(host.shows("connect: -1")) << host.output();
    EXPECT_EQ(host.exitCode(), 1);
}

class TerminalBrowser : public testing::Test
{
  protected:
    void SetUp() override { ASSERT_FALSE(device.start()); }

    static std::vector<std::string> show(const std::string& dialog)
    {
        return {dialog, "02:54:45:00:00:0b", "127.0.0.11"};
    }

    VirtualCamera device{cameraAt("127.0.0.11")};
};

TEST_F(TerminalBrowser, WritesANumberToTheCamera)
{
    TerminalHost host(show("gev-params"));
    ASSERT_TRUE(host.goDownTo("ExposureTimeRaw")) << host.output();
    EXPECT_TRUE(host.shows("ExposureTimeRaw: 1 to 19999 us"));
    EXPECT_TRUE(host.shows("1000 us"));
    host.press(kEnter);
    ASSERT_TRUE(host.shows("New value: 1000_"));
    host.press(std::string(kBackspace) + kBackspace + kBackspace + kBackspace + "2500" + kEnter);
    EXPECT_TRUE(host.shows("ExposureTimeRaw: written.")) << host.output();
    EXPECT_TRUE(host.shows("2500 us"));
    EXPECT_EQ(device.value(FeatureId::ExposureTimeRaw), 2500);
    host.press("q");
    EXPECT_TRUE(host.shows("shown: 0"));
    EXPECT_EQ(host.exitCode(), 0);
    EXPECT_TRUE(host.isTerminalRestored());
}

TEST_F(TerminalBrowser, RefusesANumberOutsideItsLimitsAndKeepsItToBeMended)
{
    TerminalHost host(show("gev-params"));
    ASSERT_TRUE(host.goDownTo("ExposureTimeRaw"));
    host.press(kEnter);
    ASSERT_TRUE(host.shows("New value: 1000_"));
    host.press(std::string("00") + kEnter);
    EXPECT_TRUE(host.shows("100000 is above the maximum of 19999."));
    EXPECT_TRUE(host.shows("New value: 100000_"));
    EXPECT_EQ(device.value(FeatureId::ExposureTimeRaw), 1000);
    host.press(kEscape);
    EXPECT_TRUE(host.shows("q: close"));
}

TEST_F(TerminalBrowser, OffersTheChoicesOfAnEnumeration)
{
    TerminalHost host(show("gev-params"));
    ASSERT_TRUE(host.goDownTo("UserSetSelector"));
    host.press(kEnter);
    ASSERT_TRUE(host.shows("New value: < UserSet1 >"));
    host.press(kUp);
    ASSERT_TRUE(host.shows("New value: < Default >"));
    host.press(kEnter);
    EXPECT_TRUE(host.shows("UserSetSelector: written."));
    EXPECT_EQ(device.value(FeatureId::UserSetSelector), 0);
}

TEST_F(TerminalBrowser, ShowsThatAFeatureIsReadOnly)
{
    TerminalHost host(show("gev-params"));
    ASSERT_TRUE(host.goDownTo("DeviceModelName"));
    EXPECT_TRUE(host.shows("text, read only"));
    host.press(kEnter);
    EXPECT_TRUE(host.shows("This cannot be changed now: text, read only."));
}

TEST_F(TerminalBrowser, ShowsTheStreamsParameters)
{
    TerminalHost host(show("stream-params"));
    ASSERT_TRUE(host.goDownTo("MaximumPendingResends")) << host.output();
    host.press(kEnter);
    ASSERT_TRUE(host.shows("New value: 0_"));
    host.press(std::string("7") + kEnter);
    EXPECT_TRUE(host.shows("MaximumPendingResends: written."));
    ASSERT_TRUE(host.goDownTo("BlocksReceived")) << host.output();
    EXPECT_TRUE(host.shows("integer, read only"));
}

TEST_F(TerminalBrowser, IsNotShownWhereThereIsNoTerminal)
{
    TerminalHost host(show("gev-params"), TerminalHost::Place::NoTerminal);
    EXPECT_TRUE(host.shows("shown: 0")) << host.output();
    EXPECT_EQ(host.exitCode(), 0);
}

} // namespace
