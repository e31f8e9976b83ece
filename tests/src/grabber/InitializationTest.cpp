// Initialising: the whole sequence, the host's settings, the camera's state, what is missing.
#include "GrabberTest.h"

#include <algorithm>

namespace
{

class InitializeTest : public GrabberTest
{
  protected:
    void SetUp() override
    {
        ASSERT_EQ(connect(), 0);
        s.forget();
    }

    bool wasCalled(const Texts& calls, const std::string& call) const
    {
        return std::find(calls.begin(), calls.end(), call) != calls.end();
    }
};

/// The calls from the first `from` on, up to but not including the first `to` behind it.
Texts slice(const Texts& calls, const std::string& from, const std::string& to = "")
{
    const auto begin = std::find(calls.begin(), calls.end(), from);
    return {begin, to.empty() ? calls.end() : std::find(begin, calls.end(), to)};
}

TEST_F(InitializeTest, RunsItsStepsInOrder)
{
    EXPECT_EQ(initialize(), 0);
    EXPECT_EQ(s.takeCallsWithoutLookups(),
              (Texts{
                  // settings
                  "log Set default device parameters",
                  "log setStreamParameter InterPacketDelay 2000",
                  "GevSCPD.SetValue 2000",
                  "Sleep 100",
                  "log -- GEN setInterPacketDelay 2000",
                  "InternalDataRate.IsAvailable",
                  "log -- GEN SetOutputDatarate Value: 3",
                  "InternalDataRate.SetValue 3",
                  "log DefaultInterPacketDelay 2000",
                  "log OutputInterPacketDelay 0",
                  "log OutputDataRate 3",
                  "log RequestMode 0",
                  // camera to a known state
                  "CameraState.GetValue",
                  "RecordStop.Execute",
                  "Sleep 100",
                  "AcquisitionStop.Execute",
                  // link and stream
                  "log setStreamParameter FirstPacketTimeout 0",
                  "stream/FirstPacketTimeout.SetValue 0",
                  "Sleep 100",
                  "log setStreamParameter PacketTimeout 1000",
                  "stream/PacketTimeout.SetValue 1000",
                  "Sleep 100",
                  "log setStreamParameter RequestTimeout 1100",
                  "stream/RequestTimeout.SetValue 1100",
                  "Sleep 100",
                  "log setStreamParameter DefaultImageTimeout 1100",
                  "stream/DefaultImageTimeout.SetValue 1100",
                  "Sleep 100",
                  "log setStreamParameter AnswerTimeout 1000",
                  "link/AnswerTimeout.SetValue 1000",
                  "Sleep 100",
                  "log setStreamParameter MaximumPendingResends 0",
                  "stream/MaximumPendingResends.SetValue 0",
                  "Sleep 100",
                  "log FastReadoutActive 1",
                  // identity and model
                  "GevSCDA.GetValue",
                  "DeviceUserID.GetValue",
                  "DeviceVendorName.GetValue",
                  "DeviceModelName.GetValue",
                  "DeviceID.GetValue",
                  "DeviceVersion.GetValue",
                  "FirmwareVersionBootloader.GetValue",
                  "FirmwareVersionController.GetValue",
                  "FirmwareVersionFPGA.GetValue",
                  "RecordCameraBufferSize.GetValue",
                  "log Firmware versions: Bootloader 102, Controller 213, FPGA 324",
                  "log Used Camera Model: quor7",
                  "log --- Used Camera Type 1,  Case: 0",
                  // user sets
                  "SensorWidth.GetValue",
                  "log -- GEN getMaxWidth 1280",
                  "SensorHeight.GetValue",
                  "log -- GEN getMaxHeight 1024",
                  "UserSetSelector.GetValue",
                  "log -- getUserSetSelection: UserSet1",
                  "UserSetDefaultSelector.GetValue",
                  "log -- getUserSetDefaultSelection: UserSet1",
                  "log UserSetSelectionState: 1 UserSetDefaultSelectionState: 1",
                  // colour, sequences, single image
                  "PixelFormat.GetValue",
                  "MultisequenceAvailable.GetValue",
                  "log MultiSequenceModeAvailable 0",
                  "OffsetX.GetValue",
                  "log -- GEN getOffsetX 0",
                  "OffsetY.GetValue",
                  "log -- GEN getOffsetY 0",
                  "Width.GetValue",
                  "log -- GEN getCurrentWidth 1280",
                  "Height.GetValue",
                  "log -- GEN getCurrentHeight 1024",
                  "PvBuffer.Alloc 1310720",
                  "log Allocate single image buffer, Buffersize 1310720",
                  // playback
                  "log Camera connected! Current mode = 3",
                  "AcquisitionSource.SetValue Memory",
                  "log -- GEN changeAquisitionSource: Memory",
                  "RecordStandby.SetValue 0",
                  "log -- GEN enableRecordStandby 0",
                  "log Starting PlaybackMode!",
                  "AcquisitionStop.Execute",
                  "PvStream.FlushPacketQueue",
                  "GevSCPD.SetValue 2000",
                  "Sleep 100",
                  "log -- GEN setInterPacketDelay 2000",
                  "InternalDataRate.IsAvailable",
                  "log -- GEN SetOutputDatarate Value: 3",
                  "InternalDataRate.SetValue 3",
                  "AcquisitionStart.Execute",
                  "log PlaybackMode started!",
              }));
}

TEST_F(InitializeTest, AppliesTheHostsSettings)
{
    const TelvoConnectionSettings settings{.useSettings = 1,
                                           .reserved1 = {},
                                           .packetSize = 8000,
                                           .defaultInterPacketDelay = 1111,
                                           .outputInterPacketDelay = 222,
                                           .firstPacketTimeout = 31,
                                           .packetTimeout = 32,
                                           .requestTimeout = 33,
                                           .defaultImageTimeout = 34,
                                           .answerTimeout = 35,
                                           .heartbeatTimeout = 3600,
                                           .heartbeatInterval = 37,
                                           .maximumPendingResends = 38,
                                           .fastReadoutActive = 0,
                                           .reserved2 = {},
                                           .requestMode = 1,
                                           .outputDataRate = 9,
                                           .reserved3 = {}};
    EXPECT_EQ(initialize(settings), 0);
    const Texts calls = s.takeCallsWithoutLookups();
    EXPECT_EQ(
        slice(calls, calls.front(), "CameraState.GetValue"),
        (Texts{"log ----------------------------> Set interpacket delay = 1111",
               "log setStreamParameter InterPacketDelay 1111", "GevSCPD.SetValue 1111", "Sleep 100",
               "log -- GEN setInterPacketDelay 1111", "InternalDataRate.IsAvailable",
               "log -- GEN SetOutputDatarate Value: 9", "InternalDataRate.SetValue 9",
               "log DefaultInterPacketDelay 1111", "log OutputInterPacketDelay 222",
               "log OutputDataRate 9", "log RequestMode 1"}));
    EXPECT_EQ(slice(calls, "log setStreamParameter FirstPacketTimeout 31", "GevSCDA.GetValue"),
              (Texts{"log setStreamParameter FirstPacketTimeout 31",
                     "stream/FirstPacketTimeout.SetValue 31",
                     "Sleep 100",
                     "log setStreamParameter PacketTimeout 32",
                     "stream/PacketTimeout.SetValue 32",
                     "Sleep 100",
                     "log setStreamParameter RequestTimeout 33",
                     "stream/RequestTimeout.SetValue 33",
                     "Sleep 100",
                     "log setStreamParameter DefaultImageTimeout 34",
                     "stream/DefaultImageTimeout.SetValue 34",
                     "Sleep 100",
                     "log setStreamParameter AnswerTimeout 35",
                     "link/AnswerTimeout.SetValue 35",
                     "Sleep 100",
                     "log setStreamParameter HeartbeatTimeout 3600",
                     "link/DefaultHeartbeatTimeout.SetValue 3600",
                     "Sleep 100",
                     "GevHeartbeatTimeout.SetValue 3600",
                     "Sleep 100",
                     "log setStreamParameter HeartbeatInterval 37",
                     "link/HeartbeatInterval.SetValue 37",
                     "Sleep 100",
                     "log setStreamParameter MaximumPendingResends 38",
                     "stream/MaximumPendingResends.SetValue 38",
                     "Sleep 100",
                     "log FastReadoutActive 0"}));
}

TEST_F(InitializeTest, ReadsTheSettingsBlockAtItsOffsets)
{
    // Little-endian bytes as any host may lay them out.
    std::uint8_t block[64] = {};
    block[0] = 1;
    block[8] = 0x57; // default inter-packet delay 0x0457
    block[9] = 0x04;
    block[12] = 0x0B; // output inter-packet delay
    block[44] = 0x16; // pending resends
    block[48] = 1;    // fast readout
    block[52] = 1;    // request mode
    block[56] = 0x05; // output data rate
    TelvoConnectionSettings settings;
    static_assert(sizeof settings == sizeof block);
    std::copy_n(block, sizeof block, reinterpret_cast<std::uint8_t*>(&settings));
    EXPECT_EQ(initialize(settings), 0);
    const Texts calls = s.takeCalls();
    for (const char* line : {"log DefaultInterPacketDelay 1111", "log OutputInterPacketDelay 11",
                             "log OutputDataRate 5", "log RequestMode 1", "log FastReadoutActive 1",
                             "log setStreamParameter MaximumPendingResends 22"}) {
        EXPECT_TRUE(wasCalled(calls, line)) << line;
    }
}

TEST_F(InitializeTest, IgnoresTheFieldsWhenTheSettingsAreNotInUse)
{
    TelvoConnectionSettings settings{};
    settings.defaultInterPacketDelay = 1111;
    settings.heartbeatTimeout = 9999;
    settings.outputDataRate = 9;
    EXPECT_EQ(initialize(settings), 0);
    const Texts calls = s.takeCalls();
    EXPECT_TRUE(wasCalled(calls, "log DefaultInterPacketDelay 2000"));
    EXPECT_TRUE(wasCalled(calls, "log OutputDataRate 3"));
    EXPECT_FALSE(wasCalled(calls, "Get GevHeartbeatTimeout"));
    EXPECT_FALSE(wasCalled(calls, "Get link/DefaultHeartbeatTimeout"));
    EXPECT_FALSE(wasCalled(calls, "Get link/HeartbeatInterval"));
}

TEST_F(InitializeTest, BindsItsFeaturesOnceInOrder)
{
    EXPECT_EQ(initialize(), 0);
    const Texts calls = s.takeCalls();
    EXPECT_EQ(slice(calls, "Get StreamGetInfoFrame", "log setStreamParameter FirstPacketTimeout 0"),
              (Texts{"Get StreamGetInfoFrame",
                     "Get StreamSingleFrame",
                     "Get AcquisitionStart",
                     "Get AcquisitionStop",
                     "Get RecordStart",
                     "Get RecordStop",
                     "Get CameraState",
                     "Get ExposureTimeRaw",
                     "Get AcquisitionFrameRateRaw",
                     "Get RecordCurrentSequenceNumber",
                     "Get RecordTrailer",
                     "Get RecordMaxFramesPerSequence",
                     "Get RecordNumberOfFrames",
                     "Get RecordNumberOfFramesPerSequence",
                     "Get BlackLevelRaw",
                     "Get GainRaw",
                     "Get AcquisitionSource",
                     "Get MultipleSlopeMode",
                     "Get MultipleSlopeDualRaw",
                     "Get MultipleSlopeTripleRaw",
                     "Get Temperature",
                     "Get ExtTriggerPolarity",
                     "Get ExtTriggerEnable",
                     "Get SyncInEnable",
                     "Get SyncInPolarity",
                     "Get SyncOutSelect",
                     "Get SyncARMPolarity",
                     "Get RecordBurstCnt",
                     "Get DecimationXY",
                     "Get RecordStandby",
                     "Get RecordTrailerRecordingActive",
                     "Get UserSetSelector",
                     "Get UserSetDefaultSelector",
                     "Get UserSetSave"}));
}

TEST_F(InitializeTest, LooksStateAndStopCommandsUpByNameBeforeBinding)
{
    EXPECT_EQ(initialize(), 0);
    EXPECT_EQ(
        slice(s.takeCalls(), "Get CameraState", "Get StreamGetInfoFrame"),
        (Texts{"Get CameraState", "CameraState.GetValue", "Get RecordStop", "RecordStop.Execute",
               "Sleep 100", "Get AcquisitionStop", "AcquisitionStop.Execute"}));
}

TEST_F(InitializeTest, IgnoresThatTheStopCommandsFail)
{
    s.answer("RecordStop.Execute", {Code::Busy});
    s.answer("AcquisitionStop.Execute", {Code::Busy});
    EXPECT_EQ(initialize(), 0);
}

TEST_F(InitializeTest, SurvivesACameraWithoutAnyFeature)
{
    s.camera().removeAll();
    EXPECT_EQ(initialize(), -2); // its user sets cannot be prepared
    EXPECT_EQ(slice(s.takeCallsWithoutLookups(), "log RequestMode 0",
                    "log setStreamParameter FirstPacketTimeout 0"),
              (Texts{"log RequestMode 0", "Sleep 100"}));
}

TEST_F(InitializeTest, StopsACameraInAnyStateButRecording)
{
    for (const char* state : {"Idle", "Live", "FlashWrite", "Other"}) {
        s.camera().enumeration("CameraState").value(state);
        EXPECT_EQ(initialize(), 0) << state;
        EXPECT_TRUE(wasCalled(s.takeCalls(), "RecordStop.Execute")) << state;
    }
}

TEST_F(InitializeTest, AttachesToARunningRecording)
{
    s.camera().enumeration("CameraState").value("Recording");
    EXPECT_EQ(initialize(), 1);
    const Texts calls = s.takeCallsWithoutLookups();
    EXPECT_FALSE(wasCalled(calls, "RecordStop.Execute"));
    EXPECT_FALSE(wasCalled(calls, "AcquisitionStop.Execute"));
    EXPECT_FALSE(wasCalled(calls, "RecordStart.Execute"));
    EXPECT_FALSE(wasCalled(calls, "RecordStandby.SetValue 0"));
    EXPECT_FALSE(wasCalled(calls, "AcquisitionSource.SetValue Memory"));
    EXPECT_EQ(slice(calls, "FlashCardAvailable.IsAvailable"),
              (Texts{"FlashCardAvailable.IsAvailable",
                     "FlashCardAvailable.GetValue",
                     "log Starting record mode",
                     "PvStream.FlushPacketQueue",
                     "PvPipeline.SetBufferSize 1310720",
                     "PvPipeline.SetBufferCount 12",
                     "GevSCPD.SetValue 2000",
                     "Sleep 100",
                     "log -- GEN setInterPacketDelay 2000",
                     "InternalDataRate.IsAvailable",
                     "log -- GEN SetOutputDatarate Value: 3",
                     "InternalDataRate.SetValue 3",
                     "RecordMaxFramesPerSequence.GetValue",
                     "log Max frames count 6400",
                     "PvBuffer.Free",
                     "PvBuffer.Alloc 1310720",
                     "log Allocate single image buffer, Buffersize 1310720",
                     "AcquisitionStart.Execute",
                     "log Record mode started.",
                     "log Camera connected! Current mode = 0"}));
}

TEST_F(InitializeTest, AsksForTheFlashSettingOnlyWithAFlashCard)
{
    s.camera().enumeration("CameraState").value("Recording");
    s.camera().boolean("FlashCardAvailable").value(true);
    EXPECT_EQ(initialize(), 1);
    EXPECT_EQ(slice(s.takeCalls(), "Get FlashCardAvailable", "log Starting record mode"),
              (Texts{"Get FlashCardAvailable", "FlashCardAvailable.IsAvailable",
                     "FlashCardAvailable.GetValue", "Get FlashCardWriteAfterRecordEnable",
                     "FlashCardWriteAfterRecordEnable.IsAvailable",
                     "FlashCardWriteAfterRecordEnable.GetValue"}));
}

TEST_F(InitializeTest, MayBeRepeatedAndReplacesTheSingleImageBuffer)
{
    ASSERT_EQ(initialize(), 0);
    s.camera().integer("Width").value(640);
    s.forget();
    EXPECT_EQ(initialize(), 0);
    const Texts calls = s.takeCallsWithoutLookups();
    EXPECT_EQ(
        slice(calls, "PvBuffer.Free", "AcquisitionSource.SetValue Memory"),
        (Texts{"PvBuffer.Free", "OffsetX.GetValue", "log -- GEN getOffsetX 0", "OffsetY.GetValue",
               "log -- GEN getOffsetY 0", "Width.GetValue", "log -- GEN getCurrentWidth 640",
               "Height.GetValue", "log -- GEN getCurrentHeight 1024", "PvBuffer.Alloc 655360",
               "log Allocate single image buffer, Buffersize 655360",
               "log Camera connected! Current mode = 4"}));
}

TEST_F(InitializeTest, GivesTheMultiSequenceFlagWithoutAskingTheCamera)
{
    std::uint8_t available = 77;
    s.camera().boolean("MultisequenceAvailable").value(true);
    ASSERT_EQ(initialize(), 0);
    EXPECT_TRUE(wasCalled(s.takeCalls(), "log MultiSequenceModeAvailable 1"));
    EXPECT_EQ(expIsMultiSequenceModeAvailable(&available, kCamera), 0);
    EXPECT_EQ(available, 1);
    EXPECT_EQ(s.takeCalls(), Texts{});

    s.camera().remove("MultisequenceAvailable");
    ASSERT_EQ(initialize(), 0);
    EXPECT_TRUE(wasCalled(s.takeCalls(), "log MultiSequenceModeAvailable 0"));
    EXPECT_EQ(expIsMultiSequenceModeAvailable(&available, kCamera), 0);
    EXPECT_EQ(available, 0);
}

TEST_F(InitializeTest, FailsSilentlyForADeviceThatIsNotConnected)
{
    s.dropConnection();
    EXPECT_EQ(initialize(), -1);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(InitializeTest, KeepsNoPointerToTheHostsSettings)
{
    TelvoConnectionSettings settings{};
    settings.useSettings = 1;
    settings.defaultInterPacketDelay = 1234;
    ASSERT_EQ(initialize(settings), 0);
    settings.defaultInterPacketDelay = 1;
    std::uint32_t delay = 0;
    EXPECT_EQ(expGetStreamParam("DefaultInterPacketDelay", &delay, kCamera), 0);
    EXPECT_EQ(delay, 1234U);
}

} // namespace
