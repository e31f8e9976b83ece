#include "RingFrame.h"

#include <gtest/gtest.h>

#include <cstring>
#include <linux/if_packet.h>
#include <vector>

using namespace gige::net;

namespace
{

using Bytes = std::vector<std::uint8_t>;

/// From 10.0.0.2:3957 to 10.0.0.1:50000, "hello"; with its checksums.
const Bytes kPacket{0x45, 0x00, 0x00, 0x21, 0x12, 0x34, 0x40, 0x00,
                    0x40, 0x11, 0x14, 0x96,                         // IP header
                    0x0a, 0x00, 0x00, 0x02, 0x0a, 0x00, 0x00, 0x01, //
                    0x0f, 0x75, 0xc3, 0x50, 0x00, 0x0d, 0xd5, 0x39, // UDP header
                    'h',  'e',  'l',  'l',  'o'};
constexpr bool kVerified = true;

Bytes changed(std::size_t at, std::uint8_t value)
{
    Bytes packet = kPacket;
    packet[at] = value;
    return packet;
}

std::string textOf(const std::optional<DatagramRun>& run)
{
    return run ? std::string(run->bytes.begin(), run->bytes.end()) : "none";
}

TEST(RingFrame, HoldsADatagram)
{
    const auto run = decodeUdp(kPacket, !kVerified, 0);
    ASSERT_TRUE(run);
    EXPECT_EQ(textOf(run), "hello");
    EXPECT_EQ(run->segmentSize, 5U);
    EXPECT_EQ(run->source, (Endpoint{{0x0A000002}, 3957}));
}

TEST(RingFrame, HoldsJoinedDatagrams)
{
    const auto run = decodeUdp(kPacket, kVerified, 2);
    ASSERT_TRUE(run);
    EXPECT_EQ(run->segmentSize, 2U);
    EXPECT_TRUE(run->isJoined());
}

TEST(RingFrame, LeavesOutWhatTheLinkPadded)
{
    Bytes padded = kPacket;
    padded.resize(46);
    EXPECT_EQ(textOf(decodeUdp(padded, !kVerified, 0)), "hello");
}

TEST(RingFrame, VerifiesTheChecksumThatTheKernelDidNot)
{
    EXPECT_FALSE(decodeUdp(changed(32, 'a'), !kVerified, 0));
    EXPECT_EQ(textOf(decodeUdp(changed(32, 'a'), kVerified, 0)), "hella");
}

TEST(RingFrame, TakesADatagramWithoutChecksum)
{
    Bytes packet = kPacket;
    packet[26] = packet[27] = 0;
    EXPECT_EQ(textOf(decodeUdp(packet, !kVerified, 0)), "hello");
}

TEST(RingFrame, RefusesAWrongHeaderChecksum)
{
    EXPECT_FALSE(decodeUdp(changed(8, 0x3f), kVerified, 0));
}

TEST(RingFrame, RefusesWrongLengths)
{
    Bytes cut = kPacket;
    cut.pop_back();
    EXPECT_FALSE(decodeUdp(cut, kVerified, 0));
    EXPECT_FALSE(decodeUdp({}, kVerified, 0));
    EXPECT_FALSE(decodeUdp(std::span(kPacket).first(27), kVerified, 0));
    EXPECT_FALSE(decodeUdp(changed(25, 7), kVerified, 0));  // shorter than its header
    EXPECT_FALSE(decodeUdp(changed(25, 14), kVerified, 0)); // longer than the IP datagram
}

/// As the kernel fills it: its header, a link's header of 14 bytes, and behind them the packet.
Bytes frameOf(const Bytes& packet)
{
    constexpr std::uint16_t kNet = 96;
    Bytes frame(256);
    tpacket2_hdr header{};
    header.tp_status = TP_STATUS_USER;
    header.tp_mac = kNet - 14;
    header.tp_net = kNet;
    header.tp_len = header.tp_snaplen = static_cast<std::uint32_t>(packet.size() + 14);
    std::memcpy(frame.data(), &header, sizeof header);
    std::ranges::copy(packet, frame.begin() + kNet);
    return frame;
}

template <typename Value>
Bytes with(Bytes frame, std::size_t at, Value value)
{
    std::memcpy(&frame[at], &value, sizeof value);
    return frame;
}

TEST(RingFrame, IsReadAsTheKernelFillsIt)
{
    EXPECT_EQ(textOf(decodeFrame(frameOf(kPacket))), "hello");
}

TEST(RingFrame, TellsHowItsDatagramsAreJoined)
{
    constexpr std::size_t kJoinedHeader = 96 - 14 - 10;
    const Bytes frame = with(with(frameOf(kPacket), kJoinedHeader + 1, std::uint8_t{5}),
                             kJoinedHeader + 4, std::uint16_t{3});
    const auto run = decodeFrame(frame);
    ASSERT_TRUE(run);
    EXPECT_EQ(run->segmentSize, 3U);
    EXPECT_FALSE(decodeFrame(with(frame, kJoinedHeader + 1, std::uint8_t{3}))); // not UDP
}

TEST(RingFrame, TrustsTheKernelsWordOnTheChecksum)
{
    const Bytes wrong = frameOf(changed(32, 'a'));
    EXPECT_FALSE(decodeFrame(wrong));
    EXPECT_TRUE(decodeFrame(with(wrong, 0, std::uint32_t{TP_STATUS_USER | TP_STATUS_CSUM_VALID})));
    EXPECT_TRUE(
        decodeFrame(with(wrong, 0, std::uint32_t{TP_STATUS_USER | TP_STATUS_CSUMNOTREADY})));
}

TEST(RingFrame, RefusesWhatIsCutOrDoesNotFit)
{
    const Bytes frame = frameOf(kPacket);
    const auto length = static_cast<std::uint32_t>(kPacket.size() + 14);
    EXPECT_FALSE(decodeFrame(with(frame, offsetof(tpacket2_hdr, tp_len), length + 1)));
    EXPECT_FALSE(decodeFrame(with(with(frame, offsetof(tpacket2_hdr, tp_len), 5000U),
                                  offsetof(tpacket2_hdr, tp_snaplen), 5000U)));
    EXPECT_FALSE(decodeFrame(with(frame, offsetof(tpacket2_hdr, tp_mac), std::uint16_t{4})));
    EXPECT_FALSE(decodeFrame(with(frame, offsetof(tpacket2_hdr, tp_net), std::uint16_t{250})));
}

} // namespace
