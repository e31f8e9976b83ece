// The stand-in itself: what the other unit tests rely on.
#include "StandIn.h"
#include "Kernel.h"
#include "PvDevice.h"
#include "PvPipeline.h"
#include "PvSerialPortIPEngine.h"
#include "PvWnd.h"

#include <array>
#include <gtest/gtest.h>

namespace
{

PvGenInteger* findInteger(PvGenParameterArray* array, const char* name)
{
    return dynamic_cast<PvGenInteger*>(array->Get(name));
}

TEST(StandIn, WritesDownCallsLookupsAndLogLinesInOrder)
{
    StandIn s;
    PvDevice device;
    EXPECT_TRUE(device.Connect("02:54:45:00:00:21", PvAccessType::Exclusive).IsOK());
    std::int64_t value = 0;
    (void)findInteger(device.GetGenParameters(), "Temperature")->GetValue(value);
    Sleep(500);
    OutputDebugStringA("-- GEN ok\r\n");
    OutputDebugStringA("no end");
    EXPECT_EQ(value, 42);
    EXPECT_EQ(s.takeCalls(), (Texts{"PvDevice.Connect 02:54:45:00:00:21 1", "Get Temperature",
                                    "Temperature.GetValue", "Sleep 500", "log -- GEN ok",
                                    "unterminated log no end"}));
    EXPECT_EQ(s.takeLog(), (Texts{"-- GEN ok\r\n", "no end"}));
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST(StandIn, GivesQueuedThenLastingThenUsualResults)
{
    StandIn s;
    PvDevice device;
    s.answer("PvDevice.Connect", {Code::NotFound, Code::Ok});
    EXPECT_EQ(device.Connect("x", PvAccessType::Open), Code::NotFound);
    EXPECT_FALSE(device.IsConnected());
    EXPECT_EQ(device.Connect("x", PvAccessType::Open), Code::Ok);
    EXPECT_TRUE(device.IsConnected());
    s.answerAlways("PvDevice.Connect", Code::Timeout);
    EXPECT_EQ(device.Connect("x", PvAccessType::Open), Code::Timeout);
    EXPECT_EQ(device.Connect("x", PvAccessType::Open), Code::Timeout);
}

TEST(StandIn, RefusesWhatACameraRefuses)
{
    StandIn s;
    EXPECT_EQ(s.camera().integer("InternalDataRate").SetValue(16), Code::OutOfRange);
    EXPECT_EQ(s.camera().integer("InternalDataRate").value(), 3);
    EXPECT_EQ(s.camera().enumeration("RecordMode").SetValue(""), Code::InvalidParameter);
    EXPECT_EQ(s.camera().enumeration("RecordMode").value(), "Single");
    s.camera().boolean("DecimationXY").available(false);
    EXPECT_EQ(s.camera().boolean("DecimationXY").SetValue(true), Code::NotAvailable);
    EXPECT_FALSE(s.camera().boolean("DecimationXY").value());
}

TEST(StandIn, LacksRemovedAndRetypesRenamedFeatures)
{
    StandIn s;
    s.camera().remove("GainRaw");
    s.camera().string("Width").value("wide");
    EXPECT_EQ(s.camera().Get("GainRaw"), nullptr);
    EXPECT_EQ(findInteger(&s.camera(), "Width"), nullptr);
    EXPECT_NE(dynamic_cast<PvGenString*>(s.camera().Get("Width")), nullptr);
}

TEST(StandIn, GivesQueuedAnswersBeforeTheValue)
{
    StandIn s;
    s.camera().integer("AcquisitionFrameRateRaw").next("GetMax", {0, 7});
    std::array<std::int64_t, 3> maxima{};
    for (std::int64_t& maximum : maxima) {
        (void)s.camera().integer("AcquisitionFrameRateRaw").GetMax(maximum);
    }
    EXPECT_EQ(maxima, (std::array<std::int64_t, 3>{0, 7, 100000}));

    s.camera().enumeration("CameraState").next({"Live"});
    PvString state;
    (void)s.camera().enumeration("CameraState").GetValue(state);
    EXPECT_STREQ(state.GetAscii(), "Live");
    (void)s.camera().enumeration("CameraState").GetValue(state);
    EXPECT_STREQ(state.GetAscii(), "Idle");
}

TEST(StandIn, NumbersFurtherObjects)
{
    StandIn s;
    PvDevice first;
    PvDevice second;
    (void)second.Disconnect();
    (void)first.Disconnect();
    EXPECT_EQ(s.takeCalls(), (Texts{"PvDevice#2.Disconnect", "PvDevice.Disconnect"}));
}

TEST(StandIn, KeepsQueriesAndKernelCallsApart)
{
    StandIn s;
    PvDevice device;
    EXPECT_FALSE(device.IsConnected());
    CloseHandle(CreateEventA(nullptr, FALSE, FALSE, nullptr));
    EXPECT_EQ(s.takeCalls(), Texts{});
    EXPECT_EQ(s.takeQueries(), Texts{"PvDevice.IsConnected"});
    EXPECT_EQ(s.takeKernelCalls(), (Texts{"CreateEventA", "CloseHandle"}));
}

class RecordingSink : public PvDeviceEventSink
{
  public:
    int losses = 0;
    void OnLinkDisconnected(PvDevice* /*device*/) override { ++losses; }
};

TEST(StandIn, TellsRegisteredSinksOfALostLink)
{
    StandIn s;
    PvDevice device;
    const auto sink = std::make_shared<RecordingSink>();
    (void)device.Connect("x", PvAccessType::Exclusive);
    (void)device.RegisterEventSink(sink);
    s.loseLink();
    EXPECT_EQ(sink->losses, 1);
    EXPECT_FALSE(device.IsConnected());
    (void)device.UnregisterEventSink(sink.get());
    s.loseLink();
    EXPECT_EQ(sink->losses, 1);
}

TEST(StandIn, RunsTheHookAtEveryCall)
{
    StandIn s;
    s.onCall([&](const std::string& call) {
        if (call == "Sleep 200") {
            s.camera().boolean("RecordStandby").value(true);
        }
    });
    Sleep(100);
    EXPECT_FALSE(s.camera().boolean("RecordStandby").value());
    Sleep(200);
    EXPECT_TRUE(s.camera().boolean("RecordStandby").value());
}

TEST(StandInKernel, MovesTheTickCountBySleepsAndScript)
{
    StandIn s;
    s.setTick(10);
    Sleep(500);
    EXPECT_EQ(GetTickCount(), 510U);
}

TEST(StandInStream, FillsQueuedBuffersFromTheFeed)
{
    StandIn s;
    PvStream stream;
    PvBuffer buffer;
    PvBuffer* retrieved = nullptr;
    PvResult operation;
    (void)buffer.Alloc(4);
    EXPECT_EQ(stream.RetrieveBuffer(&retrieved, &operation), Code::Timeout);
    EXPECT_EQ(stream.QueueBuffer(&buffer), Code::Pending);
    s.streamFeed().feedError(Code::ImageError, {1, 2, 3, 4, 5});
    EXPECT_EQ(stream.RetrieveBuffer(&retrieved, &operation), Code::Ok);
    EXPECT_EQ(retrieved, &buffer);
    EXPECT_EQ(operation, Code::ImageError);
    EXPECT_EQ(buffer.GetDataPointer()[3], 4);
}

TEST(StandInStream, GivesAbortedBuffersBack)
{
    StandIn s;
    PvStream stream;
    PvBuffer buffer;
    PvBuffer* retrieved = nullptr;
    PvResult operation;
    (void)stream.QueueBuffer(&buffer);
    s.streamFeed().feedFailure(Code::Timeout);
    EXPECT_EQ(stream.RetrieveBuffer(&retrieved, &operation), Code::Timeout);
    EXPECT_EQ(retrieved, nullptr);
    (void)stream.AbortQueuedBuffers();
    EXPECT_EQ(stream.RetrieveBuffer(&retrieved, &operation), Code::Ok);
    EXPECT_EQ(retrieved, &buffer);
    EXPECT_EQ(operation, Code::Aborted);
}

struct Retriever {
    PvStream stream;
    PvPipeline pipeline{&stream};

    static DWORD WINAPI run(LPVOID self)
    {
        PvPipeline& pipeline = static_cast<Retriever*>(self)->pipeline;
        PvBuffer* buffer = nullptr;
        PvResult operation;
        while (pipeline.RetrieveNextBuffer(&buffer, 0xFFFFFFFF, &operation).IsOK()) {
            (void)pipeline.ReleaseBuffer(buffer);
        }
        return 0;
    }
};

TEST(StandInPipeline, FeedsAWaitingThreadUntilItIsStopped)
{
    StandIn s;
    Retriever retriever;
    retriever.pipeline.SetBufferSize(2);
    (void)retriever.pipeline.Start();
    HANDLE thread = CreateThread(nullptr, 0, Retriever::run, &retriever, 0, nullptr);
    s.pipelineFeed().feedFrame({1, 2});
    ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
    EXPECT_EQ(s.takeWorkerCalls(),
              (Texts{"PvPipeline.RetrieveNextBuffer INFINITE", "PvPipeline.ReleaseBuffer",
                     "PvPipeline.RetrieveNextBuffer INFINITE"}));
    EXPECT_EQ(WaitForSingleObject(thread, 0), WAIT_TIMEOUT);
    (void)retriever.pipeline.Stop();
    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
    CloseHandle(thread);
    EXPECT_EQ(s.takeCalls(),
              (Texts{"PvPipeline.SetBufferSize 2", "PvPipeline.Start", "PvPipeline.Stop"}));
}

TEST(StandInSerial, AcceptsAndGivesBytesAsScripted)
{
    StandIn s;
    PvSerialPortIPEngine port;
    std::array<std::uint8_t, 3> bytes{'a', 'b', 'c'};
    std::uint32_t count = 0;
    s.acceptSerialBytes({2});
    (void)port.Write(bytes.data(), 3, count);
    EXPECT_EQ(count, 2U);
    (void)port.Write(bytes.data(), 3, count);
    EXPECT_EQ(count, 3U);
    s.feedSerial("xy");
    (void)port.Read(bytes.data(), 3, count, 2000);
    EXPECT_EQ(count, 2U);
    EXPECT_EQ(bytes[1], 'y');
    EXPECT_EQ(s.takeCalls(),
              (Texts{"PvSerialPortIPEngine.Write abc", "PvSerialPortIPEngine.Write abc",
                     "PvSerialPortIPEngine.Read 3 2000"}));
}

TEST(StandInWindows, ChooseWhatTheScriptChooses)
{
    StandIn s;
    PvDeviceFinderWnd finder;
    EXPECT_EQ(finder.ShowModal(), Code::Aborted);
    EXPECT_EQ(finder.GetSelected(), nullptr);
    s.chooseCamera("02:54:45:00:00:33", "127.0.0.33");
    EXPECT_EQ(finder.ShowModal(), Code::Ok);
    ASSERT_NE(finder.GetSelected(), nullptr);
    EXPECT_STREQ(finder.GetSelected()->GetIPAddress().GetAscii(), "127.0.0.33");
}

} // namespace
