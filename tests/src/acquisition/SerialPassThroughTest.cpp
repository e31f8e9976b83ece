// The byte pipe to the camera's command interpreter.
#include "CQuorGrabber.h"
#include "CameraRegistry.h"
#include "ModeTest.h"

#include <array>
#include <cstring>

namespace
{

std::int32_t write(const std::string& bytes, std::uint32_t count, std::int32_t cameraId = kCamera)
{
    return expWriteData(reinterpret_cast<const std::uint8_t*>(bytes.c_str()), count, cameraId);
}

class SerialPassThroughTest : public ModeTest
{
  protected:
    std::array<std::uint8_t, 8> buffer{};

    std::string received(std::uint32_t count) const
    {
        return {buffer.begin(), buffer.begin() + count};
    }
};

TEST_F(GrabberTest, OpensTheFirstSerialPortAfterItRegistersForEvents)
{
    Texts order;
    s.onCall([&](const std::string& call) {
        if (call == "PvDevice.RegisterEventSink" || call.find("erial") != std::string::npos) {
            order.push_back(call);
        }
    });
    EXPECT_EQ(connect(), 0);
    EXPECT_EQ(order, (Texts{"PvDevice.RegisterEventSink", "PvSerialPortIPEngine.IsOpened",
                            "PvSerialPortIPEngine.Open 0", "log - Serial com opened"}));
}

TEST_F(GrabberTest, WritesTheLineOfASerialPortThatDoesNotOpen)
{
    s.answer("PvSerialPortIPEngine.Open", {Code::AccessDenied});
    connect();
    Texts lines;
    for (const std::string& line : s.takeLog()) {
        if (line.find("serial com") != std::string::npos) {
            lines.push_back(line);
        }
    }
    EXPECT_EQ(lines, Texts{"- Error open serial com\r\n"});
}

// --- writing --------------------------------------------------------------------------------

TEST_F(SerialPassThroughTest, WritesTheBytesOnce)
{
    EXPECT_EQ(write("r 07b0", 6), 0);
    EXPECT_EQ(s.takeCalls(), (Texts{"log Write data r 07b0 Count 6",
                                    "PvSerialPortIPEngine.Write r 07b0", "log 6 bytes written"}));
    EXPECT_EQ(s.takeLog(), (Texts{"Write data r 07b0 Count 6\r\n", "6 bytes written\r\n"}));
}

TEST_F(SerialPassThroughTest, LogsDataUpToItsZeroAndWritesAll)
{
    const std::string bytes("ab\0cd", 5);
    EXPECT_EQ(write(bytes, 5), 0);
    EXPECT_EQ(s.takeCalls(), (Texts{"log Write data ab Count 5",
                                    "PvSerialPortIPEngine.Write " + bytes, "log 5 bytes written"}));
}

TEST_F(SerialPassThroughTest, LogsDataWithoutAZeroUpToItsEnd)
{
    const std::array<std::uint8_t, 3> bytes{'x', 'y', 'z'};
    EXPECT_EQ(expWriteData(bytes.data(), 3, kCamera), 0);
    EXPECT_EQ(s.takeCalls(), (Texts{"log Write data xyz Count 3", "PvSerialPortIPEngine.Write xyz",
                                    "log 3 bytes written"}));
}

TEST_F(SerialPassThroughTest, WritesOnlyAsManyBytesAsCounted)
{
    EXPECT_EQ(write("abcdef", 2), 0);
    const Texts calls = s.takeCalls();
    ASSERT_EQ(calls.size(), 3U);
    EXPECT_EQ(calls[1], "PvSerialPortIPEngine.Write ab");
    EXPECT_EQ(calls[2], "log 2 bytes written");
}

TEST_F(SerialPassThroughTest, WritesNoBytesAtAll)
{
    EXPECT_EQ(write("", 0), 0);
    EXPECT_EQ(s.takeCalls(), (Texts{"log Write data  Count 0", "PvSerialPortIPEngine.Write",
                                    "log 0 bytes written"}));
}

TEST_F(SerialPassThroughTest, FailsAfterAShortWriteWithoutASecondAttempt)
{
    s.acceptSerialBytes({4});
    EXPECT_EQ(write("abcdef", 6), -1);
    EXPECT_EQ(s.takeCalls(),
              (Texts{"log Write data abcdef Count 6", "PvSerialPortIPEngine.Write abcdef",
                     "log 4 only bytes written instead of requested 6"}));
    EXPECT_EQ(s.takeLog().back(), "4 only bytes written instead of requested 6\r\n");
}

TEST_F(SerialPassThroughTest, TakesAFailedWriteForZeroBytes)
{
    s.answer("PvSerialPortIPEngine.Write", {Code::Timeout});
    EXPECT_EQ(write("abc", 3), -1);
    EXPECT_EQ(s.takeCalls().back(), "log 0 only bytes written instead of requested 3");
}

TEST_F(SerialPassThroughTest, GoesByTheCountNotByTheResultOfAWrite)
{
    s.answer("PvSerialPortIPEngine.Write", {Code::GenericError});
    EXPECT_EQ(write("", 0), 0);
    EXPECT_EQ(s.takeCalls().back(), "log 0 bytes written");
}

TEST_F(SerialPassThroughTest, NeitherLogsNorWritesForAnUnknownCamera)
{
    EXPECT_EQ(write("abc", 3, 99), -1);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

// --- reading --------------------------------------------------------------------------------

TEST_F(SerialPassThroughTest, ReadsUpToTheCountWithinTwoSeconds)
{
    s.feedSerial("abcdefghij");
    std::uint32_t count = 8;
    EXPECT_EQ(expReadData(buffer.data(), &count, kCamera), 0);
    EXPECT_EQ(count, 8U);
    EXPECT_EQ(received(count), "abcdefgh");
    EXPECT_EQ(s.takeCalls(), Texts{"PvSerialPortIPEngine.Read 8 2000"});
    EXPECT_EQ(expReadData(buffer.data(), &count, kCamera), 0);
    EXPECT_EQ(count, 2U);
    EXPECT_EQ(received(count), "ij");
}

TEST_F(SerialPassThroughTest, ReadsNothingWithSuccess)
{
    std::uint32_t count = 8;
    EXPECT_EQ(expReadData(buffer.data(), &count, kCamera), 0);
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(s.takeCalls(), Texts{"PvSerialPortIPEngine.Read 8 2000"});
}

TEST_F(SerialPassThroughTest, TakesAFailedReadForZeroBytes)
{
    s.feedSerial("abc");
    s.answer("PvSerialPortIPEngine.Read", {Code::Timeout});
    std::uint32_t count = 8;
    EXPECT_EQ(expReadData(buffer.data(), &count, kCamera), 0);
    EXPECT_EQ(count, 0U);
}

TEST_F(SerialPassThroughTest, ReadsNothingForAnUnknownCamera)
{
    s.feedSerial("abc");
    std::uint32_t count = 8;
    EXPECT_EQ(expReadData(buffer.data(), &count, 99), -1);
    EXPECT_EQ(count, 8U);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(SerialPassThroughTest, UsesThePortWithoutAskingWhetherItIsOpen)
{
    std::uint32_t count = 8;
    s.takeQueries();
    EXPECT_EQ(write("abc", 3), 0);
    EXPECT_EQ(expReadData(buffer.data(), &count, kCamera), 0);
    EXPECT_EQ(s.takeQueries(), Texts{});
}

// --- flushing -------------------------------------------------------------------------------

class SerialFlushTest : public GrabberTest
{
  protected:
    /// Starts a block transfer with this request mode; gives what it did to the serial port.
    Texts flushes(std::uint32_t requestMode)
    {
        TelvoConnectionSettings settings{};
        settings.useSettings = 1;
        settings.requestMode = requestMode;
        EXPECT_EQ(initialize(settings), 0);
        s.forget();
        EXPECT_EQ(expStartFrameBlockTransfer(kCamera), 0);
        EXPECT_TRUE(s.pipelineFeed().waitUntilDrained());
        Texts serial;
        for (const std::string& call : s.takeCalls()) {
            if (call.starts_with("PvSerialPort") || call.find("serial") != std::string::npos) {
                serial.push_back(call);
            }
        }
        return serial;
    }
};

TEST_F(SerialFlushTest, FlushesTheOpenPortForSerialRequests)
{
    ASSERT_EQ(connect(), 0);
    EXPECT_EQ(flushes(1), (Texts{"PvSerialPortIPEngine.FlushRxBuffer", "log - Flush serial com"}));
}

TEST_F(SerialFlushTest, LeavesThePortAloneForRequestsThroughFeatures)
{
    ASSERT_EQ(connect(), 0);
    EXPECT_EQ(flushes(0), Texts{});
}

TEST_F(SerialFlushTest, GoesOnAfterAFlushThatFails)
{
    ASSERT_EQ(connect(), 0);
    s.answerAlways("PvSerialPortIPEngine.FlushRxBuffer", Code::GenericError);
    EXPECT_EQ(flushes(1), (Texts{"PvSerialPortIPEngine.FlushRxBuffer", "log - Flush serial com"}));
}

TEST_F(SerialFlushTest, LeavesAClosedPortAlone)
{
    s.answer("PvSerialPortIPEngine.Open", {Code::AccessDenied});
    ASSERT_EQ(connect(), 0);
    EXPECT_EQ(flushes(1), Texts{}); // requests go through features
    cameraRegistry().find(kCamera)->settings().link.serialLine.flush();
    EXPECT_EQ(s.takeCalls(), Texts{"log - Error flush serial com"});
}

} // namespace
