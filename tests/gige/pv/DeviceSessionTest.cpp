#include "ControlFixture.h"
#include "DeviceConnection.h"
#include "DeviceDescription.h"
#include "FakeDevice.h"
#include "PvDevice.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

using gige::control::elapsed;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr std::uint32_t kFile = 0x10000;
constexpr std::size_t kPiece = 536; // bytes of one READMEM, at most

/// A device with a description of some pieces, which is a feature and much blank.
class DeviceSession : public testing::Test
{
  protected:
    void describe(std::size_t pieces)
    {
        std::string xml = "<RegisterDescription><Port Name=\"Device\"/>"
                          "<Integer Name=\"N\"><Value>7</Value></Integer>";
        const std::string end = "</RegisterDescription>";
        xml.resize(pieces * kPiece - end.size(), ' ');
        xml += end;
        mDevice.setMemory(kFile, Bytes(xml.begin(), xml.end()));
        std::array<char, 512> url{};
        std::snprintf(url.data(), url.size(), "Local:x.xml;%x;%zx", kFile, xml.size());
        mDevice.setMemory(0x0200, Bytes(url.begin(), url.end()));
        mDevice.setMemory(0x0400, Bytes(512));
    }

    /// @param answer  what becomes of each faultless answer to a READMEM of the file
    void answerPieces(const std::function<FakeAnswer(const FakeCommand&)>& answer)
    {
        mDevice.setScript([answer](const FakeCommand& command) {
            const bool isPiece = command.code == kReadMemoryCommand && command.firstWord >= kFile;
            return std::vector{isPiece ? answer(command) : FakeAnswer{command.ack}};
        });
    }

    PvResult connect() { return mHost.Connect("127.0.2.51", PvAccessType::Exclusive); }

    FakeDevice mDevice{"127.0.2.51"};
    PvDevice mHost;
};

TEST_F(DeviceSession, IsOpenedWithTheDevicesFeatures)
{
    describe(2);
    ASSERT_EQ(connect(), PvResult::Code::Ok);
    EXPECT_NE(mHost.GetGenParameters()->Get("N"), nullptr);
}

TEST_F(DeviceSession, WaitsForADescriptionThatComesSlowly)
{
    describe(40);
    answerPieces([](const FakeCommand& command) {
        return FakeAnswer{.datagram = command.ack, .delay = milliseconds(30)};
    });
    const auto start = Clock::now();
    EXPECT_EQ(connect(), PvResult::Code::Ok);
    EXPECT_GE(elapsed(start), 1200) << "longer than any silence may last";
}

TEST_F(DeviceSession, EndsSoonWhenTheDescriptionsPiecesAreShort)
{
    describe(10);
    answerPieces([pieces = 0](const FakeCommand& command) mutable {
        Bytes ack = command.ack;
        if (++pieces > 3) {
            ack.resize(8 + 4 + 100);
            ack.at(4) = 0;
            ack.at(5) = 104;
        }
        return FakeAnswer{ack};
    });
    const auto start = Clock::now();
    EXPECT_EQ(connect(), PvResult::Code::GenericError);
    EXPECT_LT(elapsed(start), 3'500) << "nominally 900 ms";
    EXPECT_EQ(mDevice.registerValue(0x0A00), 0U);
}

TEST_F(DeviceSession, EndsSoonWithASilentDevice)
{
    mDevice.setSilent(true);
    const auto start = Clock::now();
    EXPECT_EQ(connect(), PvResult::Code::Timeout);
    EXPECT_LT(elapsed(start), 3'500) << "nominally 900 ms";
}

TEST_F(DeviceSession, ReadsADescriptionForSoLongOnly)
{
    describe(100);
    answerPieces([](const FakeCommand& command) {
        return FakeAnswer{.datagram = command.ack, .delay = milliseconds(30)};
    });
    const gige::control::LinkSettings settings;
    auto opened = gige::control::DeviceConnection::open(
        {.ip = {0x7F000233}, .nic = gige::control::loopback()}, gige::control::AccessType::Control,
        settings, [] {});
    ASSERT_TRUE(opened);
    EXPECT_FALSE(readDescription((*opened)->registers(), [](const std::string&) { return true; },
                                 milliseconds(300)));
    EXPECT_LT(mDevice.count(kReadMemoryCommand), 60U);
}

TEST_F(DeviceSession, IsLeftQuicklyWhenTheDeviceOnlyPromises)
{
    describe(1);
    ASSERT_EQ(connect(), PvResult::Code::Ok);
    mDevice.setScript([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{pendingAck(command, 10'000)}};
    });
    const auto start = Clock::now();
    EXPECT_EQ(mHost.ResetStreamDestination(0), PvResult::Code::Timeout);
    EXPECT_EQ(mHost.Disconnect(), PvResult::Code::Ok);
    EXPECT_LT(elapsed(start), 4'000) << "nominally 800 ms";
}

} // namespace
