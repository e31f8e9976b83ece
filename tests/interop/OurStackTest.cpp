#include "Discovery.h"
#include "Program.h"
#include "PvDevice.h"
#include "PvPipeline.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <thread>

namespace
{

/// A stranger's simulated camera; it takes this one address.
class OurStack : public testing::Test
{
  protected:
    void SetUp() override
    {
        for (int i = 0; i < 100 && !device.IsConnected(); ++i) {
            if (!device.Connect("127.0.0.1", PvAccessType::Control).IsOK()) {
                std::this_thread::sleep_for(std::chrono::milliseconds(50));
            }
        }
        ASSERT_TRUE(device.IsConnected());
    }

    PvGenInteger& integer(const char* name)
    {
        return dynamic_cast<PvGenInteger&>(*device.GetGenParameters()->Get(name));
    }

    std::int64_t valueOf(const char* name)
    {
        std::int64_t value = -1;
        EXPECT_TRUE(integer(name).GetValue(value).IsOK()) << name;
        return value;
    }

    void execute(const char* name)
    {
        auto& command = dynamic_cast<PvGenCommand&>(*device.GetGenParameters()->Get(name));
        ASSERT_TRUE(command.Execute().IsOK()) << name;
    }

    Program camera{{"arv-fake-gv-camera-0.8", "-i", "127.0.0.1"}};
    PvDevice device;
};

TEST_F(OurStack, FindsAStrangersCamera)
{
    const auto found = gige::control::discover(gige::control::usableInterfaces());
    EXPECT_TRUE(std::ranges::any_of(found, [](const auto& each) {
        return gige::net::toText(each.ip()) == "127.0.0.1" && each.info.model == "Fake";
    }));
}

TEST_F(OurStack, ReadsAndWritesAStrangersFeatures)
{
    PvString model;
    auto& name = dynamic_cast<PvGenString&>(*device.GetGenParameters()->Get("DeviceModelName"));
    ASSERT_TRUE(name.GetValue(model).IsOK());
    EXPECT_STREQ(model.GetAscii(), "Fake");
    std::int64_t largest = 0;
    ASSERT_TRUE(integer("Width").GetMax(largest).IsOK());
    EXPECT_GE(largest, 512);
    ASSERT_TRUE(integer("Width").SetValue(256).IsOK());
    EXPECT_EQ(valueOf("Width"), 256);
    EXPECT_FALSE(integer("Width").SetValue(largest + 1).IsOK());
    EXPECT_EQ(valueOf("Width"), 256);
    auto* format = dynamic_cast<PvGenEnum*>(device.GetGenParameters()->Get("PixelFormat"));
    ASSERT_NE(format, nullptr);
    PvString entry;
    ASSERT_TRUE(format->GetValue(entry).IsOK());
    EXPECT_STREQ(entry.GetAscii(), "Mono8");
}

TEST_F(OurStack, TakesTwoHundredWholeFramesFromAStranger)
{
    PvStream stream;
    ASSERT_TRUE(stream.Open("127.0.0.1", 0, 0, "").IsOK());
    ASSERT_TRUE(
        device.SetStreamDestination(stream.GetLocalIPAddress(), stream.GetLocalPort(), 0).IsOK());
    PvPipeline pipeline(&stream);
    pipeline.SetBufferSize(static_cast<std::uint32_t>(valueOf("PayloadSize")));
    ASSERT_TRUE(pipeline.SetBufferCount(16).IsOK());
    ASSERT_TRUE(pipeline.Start().IsOK());
    execute("AcquisitionStart");
    int whole = 0;
    for (int i = 0; i < 200; ++i) {
        PvBuffer* buffer = nullptr;
        PvResult operation;
        ASSERT_TRUE(pipeline.RetrieveNextBuffer(&buffer, 5000, &operation).IsOK());
        whole += operation.IsOK() ? 1 : 0;
        ASSERT_TRUE(pipeline.ReleaseBuffer(buffer).IsOK());
    }
    EXPECT_EQ(whole, 200);
    execute("AcquisitionStop");
}

} // namespace
