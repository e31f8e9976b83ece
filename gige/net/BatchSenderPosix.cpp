#include "BatchSender.h"

#include "PosixSocket.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <netinet/udp.h>
#include <sys/socket.h>

namespace gige::net
{

namespace
{

constexpr std::size_t kMessages = 64;         // per system call
constexpr std::size_t kMaxSegments = 64;      // UDP_MAX_SEGMENTS of the kernel
constexpr std::size_t kMaxJoinedSize = 65507; // bytes: 65535 less the IP and UDP headers
constexpr std::size_t kSendControlSize = CMSG_SPACE(sizeof(std::uint16_t));

/// How many packets from the front may travel joined: equal sizes, the last may be shorter.
std::size_t joinable(std::span<const PacketSlices> packets)
{
    const std::size_t segment = packets[0].size();
    std::size_t total = segment;
    std::size_t count = 1;
    while (count < std::min(packets.size(), kMaxSegments)) {
        const std::size_t size = packets[count].size();
        if (size == 0 || size > segment || total + size > kMaxJoinedSize) {
            break;
        }
        total += size;
        ++count;
        if (size < segment) {
            break;
        }
    }
    return count;
}

} // namespace

struct BatchSender::Batch {
    struct alignas(cmsghdr) Control {
        std::array<std::uint8_t, kSendControlSize> bytes;
    };

    std::array<iovec, kMessages * kMaxSegments * 2> vectors{};
    std::array<Control, kMessages> controls{};
    std::array<mmsghdr, kMessages> messages{};
    std::array<std::size_t, kMessages> packetCounts{};
    std::size_t messageCount = 0;
    std::size_t vectorCount = 0;
    bool segmentation = true; // until the mode or the kernel refuses it

    void addSlice(std::span<const std::uint8_t> slice)
    {
        if (!slice.empty()) {
            vectors[vectorCount++] = {.iov_base = const_cast<std::uint8_t*>(slice.data()),
                                      .iov_len = slice.size()};
        }
    }

    void addMessage(sockaddr_in& destination, std::span<const PacketSlices> packets)
    {
        iovec* const first = &vectors[vectorCount];
        const std::size_t firstCount = vectorCount;
        for (const PacketSlices& packet : packets) {
            addSlice(packet.header);
            addSlice(packet.payload);
        }
        msghdr& message = messages[messageCount].msg_hdr;
        message = {};
        message.msg_name = &destination;
        message.msg_namelen = sizeof destination;
        message.msg_iov = first;
        message.msg_iovlen = vectorCount - firstCount;
        if (packets.size() > 1) {
            setSegmentSize(message, packets[0].size());
        }
        packetCounts[messageCount++] = packets.size();
    }

    void setSegmentSize(msghdr& message, std::size_t size)
    {
        message.msg_control = &controls[messageCount];
        message.msg_controllen = kSendControlSize;
        cmsghdr* const control = CMSG_FIRSTHDR(&message);
        control->cmsg_level = SOL_UDP;
        control->cmsg_type = UDP_SEGMENT;
        control->cmsg_len = CMSG_LEN(sizeof(std::uint16_t));
        const auto segment = static_cast<std::uint16_t>(size);
        std::memcpy(CMSG_DATA(control), &segment, sizeof segment);
    }

    /// Fills the messages from the front of `packets`, which is not empty.
    void fill(sockaddr_in& destination, std::span<const PacketSlices> packets)
    {
        messageCount = 0;
        vectorCount = 0;
        while (messageCount < kMessages && !packets.empty()) {
            const std::size_t count = segmentation ? joinable(packets) : 1;
            addMessage(destination, packets.first(count));
            packets = packets.subspan(count);
        }
    }
};

BatchSender::BatchSender(UdpSocket& socket, SendMode mode)
    : mSocket(socket), mBatch(std::make_unique<Batch>())
{
    mBatch->segmentation = mode == SendMode::Joined;
}

BatchSender::~BatchSender() = default;

std::size_t BatchSender::send(const Endpoint& destination, std::span<const PacketSlices> packets)
{
    Batch& batch = *mBatch;
    sockaddr_in address = toNative(destination);
    std::size_t sent = 0;
    while (sent < packets.size()) {
        batch.fill(address, packets.subspan(sent));
        const int count = sendmmsg(mSocket.handle(), batch.messages.data(),
                                   static_cast<unsigned>(batch.messageCount), 0);
        for (int i = 0; i < count; ++i) {
            sent += batch.packetCounts[static_cast<std::size_t>(i)];
        }
        if (count >= 0 || errno == EINTR || errno == ECONNREFUSED) {
            continue;
        }
        if (batch.packetCounts[0] == 1) {
            break;
        }
        // No offload on this path, or segments beyond its MTU: the kernel cuts them singly.
        batch.segmentation = false;
    }
    return sent;
}

} // namespace gige::net
