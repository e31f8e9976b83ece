#include "StackHost.h"

#include "PacketRing.h"

void StackHost::SetUp()
{
    ASSERT_FALSE(camera.start());
}

void StackHost::openStream(std::int64_t framesPerSecond)
{
    ASSERT_TRUE(stream.Open(kIp, 0, 0, "").IsOK());
    ASSERT_TRUE(
        device.SetStreamDestination(stream.GetLocalIPAddress(), stream.GetLocalPort(), 0).IsOK());
    PvGenParameterArray& features = *device.GetGenParameters();
    setInteger(features, "Width", 640);
    setInteger(features, "Height", 480);
    setInteger(features, "AcquisitionFrameRateRaw", framesPerSecond);
    auto* const source = dynamic_cast<PvGenEnum*>(features.Get("AcquisitionSource"));
    ASSERT_NE(source, nullptr);
    ASSERT_TRUE(source->SetValue("Live").IsOK());
}

void StackHost::startPipeline(std::uint32_t buffers)
{
    pipeline.SetBufferSize(640 * 480);
    ASSERT_TRUE(pipeline.SetBufferCount(buffers).IsOK());
    ASSERT_TRUE(pipeline.Start().IsOK());
}

void StackHost::endNoPictureByTime()
{
    setInteger(*stream.GetParameters(), "PacketTimeout", 20'000);
    setInteger(*stream.GetParameters(), "DefaultImageTimeout", 20'000);
}

void StackHost::execute(const char* command)
{
    auto* const feature = dynamic_cast<PvGenCommand*>(device.GetGenParameters()->Get(command));
    ASSERT_NE(feature, nullptr) << command;
    ASSERT_TRUE(feature->Execute().IsOK()) << command;
}

std::int64_t StackHost::statistic(const char* name)
{
    std::int64_t value = -1;
    (void)dynamic_cast<PvGenInteger&>(*stream.GetParameters()->Get(name)).GetValue(value);
    return value;
}

void StackHost::setInteger(PvGenParameterArray& array, const char* name, std::int64_t value)
{
    auto* const feature = dynamic_cast<PvGenInteger*>(array.Get(name));
    ASSERT_NE(feature, nullptr) << name;
    ASSERT_EQ(feature->SetValue(value), PvResult::Code::Ok) << name;
}

bool StackHost::hasPacketRings()
{
    return gige::net::PacketRing::open({.source = {0x7F00000B}}, 1500) != nullptr;
}

camera::CameraOptions likeOnACable()
{
    camera::CameraOptions options;
    options.send = gige::net::SendMode::Single;
    return options;
}
