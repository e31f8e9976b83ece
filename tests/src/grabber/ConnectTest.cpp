// Connecting: by address with retries, by the user's choice, and what follows until it stands.
#include "GrabberTest.h"

#include <algorithm>

namespace
{

class ConnectTest : public GrabberTest
{
};

const Texts kHead{"log * Connect grabber", "log * MAC 02:54:45:00:00:21 IP 127.0.0.21"};
const Texts kSuccessfulAttempt{"log Camera contains a valid IP configuration!",
                               "PvDevice.Connect 02:54:45:00:00:21 1"};
const Texts kDefaultPacketSize{"log setStreamParameter GevSCPSPacketSize 1440",
                               "Get GevSCPSPacketSize", "GevSCPSPacketSize.SetValue 1440",
                               "log -- GEN setPackageSize 1440", "Sleep 100"};
const Texts kOpensStream{"PvStream.Open 127.0.0.21 0 0 ''"};
const Texts kAfterStream{"PvDevice.SetStreamDestination 127.0.0.9 50123 0",
                         "PvDevice.RegisterEventSink",
                         "PvSerialPortIPEngine.Open 0",
                         "log - Serial com opened",
                         "Get AckEnable",
                         "AckEnable.Execute",
                         "Get CameraState",
                         "CameraState.GetValue"};
const Texts kDestroysUnconnected{"PvDevice.ResetStreamDestination 0", "log Grabber disconnected!."};

TEST_F(ConnectTest, RunsItsStepsInOrder)
{
    EXPECT_EQ(connect(), 0);
    EXPECT_EQ(s.takeCalls(),
              (kHead + kSuccessfulAttempt + kDefaultPacketSize + kOpensStream + kAfterStream));
}

TEST_F(ConnectTest, GivesUpAfterSixAttempts200MsApart)
{
    s.answerAlways("PvDevice.Connect", Code::NotFound);
    EXPECT_EQ(connect(), -1);
    EXPECT_EQ(s.takeCalls(), (kHead +
                              times(6, {"log Camera contains a valid IP configuration!",
                                        "PvDevice.Connect 02:54:45:00:00:21 1", "Sleep 200"}) +
                              kDestroysUnconnected));
}

TEST_F(ConnectTest, TakesTheSixthAttempt)
{
    s.answer("PvDevice.Connect",
             {Code::NotFound, Code::Timeout, Code::AccessDenied, Code::NotFound, Code::NotFound});
    EXPECT_EQ(connect(), 0);
    EXPECT_EQ(s.takeCalls(),
              (kHead +
               times(5, {"log Camera contains a valid IP configuration!",
                         "PvDevice.Connect 02:54:45:00:00:21 1", "Sleep 200"}) +
               kSuccessfulAttempt + kDefaultPacketSize + kOpensStream + kAfterStream));
}

TEST_F(ConnectTest, SendsTheIpConfigurationBeforeEveryAttempt)
{
    s.answerAlways("PvDevice.Connect", Code::NotFound);
    EXPECT_EQ(connect(kMac, kIp, 0, {}), -1);
    EXPECT_EQ(s.takeCalls(), (kHead +
                              times(6, {"log Set IP configuration to device!",
                                        "PvDevice.SetIPConfiguration 02:54:45:00:00:21 127.0.0.21 "
                                        "[255.255.255.0] 0.0.0.0",
                                        "PvDevice.Connect 02:54:45:00:00:21 1", "Sleep 200"}) +
                              kDestroysUnconnected));
}

TEST_F(ConnectTest, GoesOnWhenTheIpConfigurationIsRefused)
{
    s.answer("PvDevice.SetIPConfiguration", {Code::Timeout});
    EXPECT_EQ(connect(kMac, kIp, 0, {}), 0);
    EXPECT_EQ(s.takeCalls(), (kHead +
                              Texts{"log Set IP configuration to device!",
                                    "PvDevice.SetIPConfiguration 02:54:45:00:00:21 127.0.0.21 "
                                    "[255.255.255.0] 0.0.0.0",
                                    "log * !! Error can't set the IP configuration TIMEOUT",
                                    "PvDevice.Connect 02:54:45:00:00:21 1"} +
                              kDefaultPacketSize + kOpensStream + kAfterStream));
}

TEST_F(ConnectTest, AsksTheUserWhenTheMacTextIsEmpty)
{
    EXPECT_EQ(connect("", kIp, 1, {}), -1);
    EXPECT_EQ(s.takeCalls(),
              (Texts{"log * Connect grabber", "log * MAC  IP 127.0.0.21",
                     "log Manual device connection!", "PvDeviceFinderWnd.ShowModal no parent"} +
               kDestroysUnconnected));
}

TEST_F(ConnectTest, AsksTheUserWhenTheIpTextIsEmpty)
{
    EXPECT_EQ(connect(kMac, "", 0, {}), -1);
    EXPECT_EQ(s.takeCalls(),
              (Texts{"log * Connect grabber", "log * MAC 02:54:45:00:00:21 IP",
                     "log Manual device connection!", "PvDeviceFinderWnd.ShowModal no parent"} +
               kDestroysUnconnected));
}

TEST_F(ConnectTest, ConnectsToTheUsersChoice)
{
    s.chooseCamera("02:54:45:00:00:77", "127.0.0.77");
    EXPECT_EQ(connect("", "", 1, {}), 0);
    EXPECT_EQ(s.takeCalls(),
              (Texts{"log * Connect grabber", "log * MAC  IP", "log Manual device connection!",
                     "PvDeviceFinderWnd.ShowModal no parent",
                     "PvDevice.Connect selected 02:54:45:00:00:77 1"} +
               kDefaultPacketSize + Texts{"PvStream.Open 127.0.0.77 0 0 ''"} + kAfterStream));
    char text[50];
    const std::uint32_t size = sizeof text;
    EXPECT_EQ(expGetParam("macAddress", text, &size, kCamera), 0);
    EXPECT_STREQ(text, "02:54:45:00:00:77");
    EXPECT_EQ(expGetParam("ipAddress", text, &size, kCamera), 0);
    EXPECT_STREQ(text, "127.0.0.77");
}

TEST_F(ConnectTest, FailsWhenTheUserConfirmsWithoutASelection)
{
    s.confirmWithoutSelection();
    EXPECT_EQ(connect("", "", 1, {}), -1);
    EXPECT_EQ(s.takeCalls(),
              (Texts{"log * Connect grabber", "log * MAC  IP", "log Manual device connection!",
                     "PvDeviceFinderWnd.ShowModal no parent"} +
               kDestroysUnconnected));
}

TEST_F(ConnectTest, FailsWhenTheUsersChoiceCannotBeConnected)
{
    s.chooseCamera("02:54:45:00:00:77", "127.0.0.77");
    s.answer("PvDevice.Connect", {Code::AccessDenied});
    EXPECT_EQ(connect("", "", 1, {}), -1);
    EXPECT_EQ(s.takeCalls(),
              (Texts{"log * Connect grabber", "log * MAC  IP", "log Manual device connection!",
                     "PvDeviceFinderWnd.ShowModal no parent",
                     "PvDevice.Connect selected 02:54:45:00:00:77 1"} +
               kDestroysUnconnected));
}

TEST_F(ConnectTest, SetsTheHostsPacketSize)
{
    TelvoConnectionSettings settings{};
    settings.useSettings = 1;
    settings.packetSize = 8000;
    EXPECT_EQ(connect(kMac, kIp, 1, settings), 0);
    EXPECT_EQ(s.takeCalls(), (kHead + kSuccessfulAttempt +
                              Texts{"log setStreamParameter GevSCPSPacketSize 8000",
                                    "Get GevSCPSPacketSize", "GevSCPSPacketSize.SetValue 8000",
                                    "log -- GEN setPackageSize 8000", "Sleep 100"} +
                              kOpensStream + kAfterStream));
}

TEST_F(ConnectTest, Sets1440WhateverThePacketSizeIfTheSettingsAreNotInUse)
{
    TelvoConnectionSettings settings{};
    settings.packetSize = 8000;
    EXPECT_EQ(connect(kMac, kIp, 1, settings), 0);
    EXPECT_EQ(s.takeCalls(),
              (kHead + kSuccessfulAttempt + kDefaultPacketSize + kOpensStream + kAfterStream));
}

TEST_F(ConnectTest, NegotiatesAPacketSizeOfZeroAndIgnoresTheResult)
{
    TelvoConnectionSettings settings{};
    settings.useSettings = 1;
    s.answer("PvDevice.NegotiatePacketSize", {Code::Timeout});
    EXPECT_EQ(connect(kMac, kIp, 1, settings), 0);
    EXPECT_EQ(s.takeCalls(), (kHead + kSuccessfulAttempt +
                              Texts{"log - Auto Packet Size Detection",
                                    "PvDevice.NegotiatePacketSize 0 1440", "Sleep 100"} +
                              kOpensStream + kAfterStream));
}

TEST_F(ConnectTest, DisconnectsWhenTheStreamCannotBeOpened)
{
    s.answer("PvStream.Open", {Code::NetworkError});
    EXPECT_EQ(connect(), -1);
    EXPECT_EQ(s.takeCalls(),
              (kHead + kSuccessfulAttempt + kDefaultPacketSize + kOpensStream +
               Texts{"log Can't open stream!", "PvDevice.Disconnect"} + kDestroysUnconnected));
}

TEST_F(ConnectTest, IgnoresFailuresOfDestinationSinkSerialPortAndAckEnable)
{
    s.answer("PvDevice.SetStreamDestination", {Code::Timeout});
    s.answer("PvDevice.RegisterEventSink", {Code::GenericError});
    s.answer("PvSerialPortIPEngine.Open", {Code::NotSupported});
    s.answer("AckEnable.Execute", {Code::Busy});
    Texts steps = kAfterStream;
    std::replace(steps.begin(), steps.end(), std::string("log - Serial com opened"),
                 std::string("log - Error open serial com"));
    EXPECT_EQ(connect(), 0);
    EXPECT_EQ(s.takeCalls(),
              (kHead + kSuccessfulAttempt + kDefaultPacketSize + kOpensStream + steps));
}

TEST_F(ConnectTest, SkipsAMissingAckEnable)
{
    s.camera().remove("AckEnable");
    EXPECT_EQ(connect(), 0);
    const Texts calls = s.takeCalls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "Get AckEnable"), 1);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "AckEnable.Execute"), 0);
    EXPECT_EQ(calls.back(), "CameraState.GetValue");
}

TEST_F(ConnectTest, Gives1WhileTheCameraWritesItsFlashCard)
{
    s.camera().enumeration("CameraState").value("FlashWrite");
    EXPECT_EQ(connect(), 1);
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0); // it is registered all the same
}

TEST_F(ConnectTest, CountsAFailedStateReadAsIdle)
{
    s.answer("CameraState.GetValue", {Code::Timeout});
    EXPECT_EQ(connect(), 0);
}

TEST_F(ConnectTest, CountsAMissingStateAsIdle)
{
    s.camera().remove("CameraState");
    EXPECT_EQ(connect(), 0);
}

TEST_F(ConnectTest, Gives0InEveryOtherState)
{
    for (const char* state : {"Idle", "Live", "Recording", "Other"}) {
        s.camera().enumeration("CameraState").value(state);
        EXPECT_EQ(connect(), 0) << state;
        expDisconnectGrabber(kCamera);
    }
}

TEST_F(ConnectTest, CutsAddressTextsAt49Characters)
{
    const std::string longMac(60, 'a');
    const std::string longIp(60, 'b');
    EXPECT_EQ(connect(longMac.c_str(), longIp.c_str(), 1, {}), 0);
    char text[64];
    const std::uint32_t size = sizeof text;
    EXPECT_EQ(expGetParam("macAddress", text, &size, kCamera), 0);
    EXPECT_EQ(text, std::string(49, 'a'));
    EXPECT_EQ(expGetParam("ipAddress", text, &size, kCamera), 0);
    EXPECT_EQ(text, std::string(49, 'b'));
}

} // namespace
