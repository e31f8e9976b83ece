#include "BatchReceiver.h"

#include "PosixAddress.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <netinet/udp.h>
#include <sys/socket.h>

namespace gige::net
{

namespace
{

/// Slots per call: together they stay within a core's second-level cache, so that the copy out of
/// them reads what the kernel has just written there.
constexpr std::size_t kSlots = 8;
constexpr std::size_t kSlotSize = 65536; // bytes; the longest run that the kernel joins
constexpr std::size_t kControlSize = CMSG_SPACE(sizeof(int));

/// Length of each datagram in the run; 0: the kernel joined nothing.
std::size_t segmentSizeOf(msghdr& message)
{
    for (cmsghdr* control = CMSG_FIRSTHDR(&message); control != nullptr;
         control = CMSG_NXTHDR(&message, control)) {
        if (control->cmsg_level == SOL_UDP && control->cmsg_type == UDP_GRO) {
            int size = 0;
            std::memcpy(&size, CMSG_DATA(control), sizeof size);
            return static_cast<std::size_t>(size);
        }
    }
    return 0;
}

} // namespace

struct BatchReceiver::Buffers {
    struct alignas(cmsghdr) Control {
        std::array<std::uint8_t, kControlSize> bytes;
    };

    std::vector<std::uint8_t> memory = std::vector<std::uint8_t>(kSlots * kSlotSize);
    std::array<iovec, kSlots> vectors{};
    std::array<sockaddr_in, kSlots> sources{};
    std::array<Control, kSlots> controls{};
    std::array<mmsghdr, kSlots> messages{};

    Buffers()
    {
        for (std::size_t i = 0; i < kSlots; ++i) {
            vectors[i] = {.iov_base = &memory[i * kSlotSize], .iov_len = kSlotSize};
        }
    }

    /// The call overwrites the lengths.
    void prepare()
    {
        for (std::size_t i = 0; i < kSlots; ++i) {
            messages[i].msg_hdr = {.msg_name = &sources[i],
                                   .msg_namelen = sizeof sources[i],
                                   .msg_iov = &vectors[i],
                                   .msg_iovlen = 1,
                                   .msg_control = &controls[i],
                                   .msg_controllen = kControlSize,
                                   .msg_flags = 0};
        }
    }
};

BatchReceiver::BatchReceiver(UdpSocket& socket)
    : mSocket(socket), mRuns(kSlots), mBuffers(std::make_unique<Buffers>())
{
    // Kernels without it deliver the datagrams one by one.
    const int on = 1;
    setsockopt(mSocket.handle(), SOL_UDP, UDP_GRO, &on, sizeof on);
}

BatchReceiver::~BatchReceiver() = default;

ReceiveStatus BatchReceiver::take()
{
    Buffers& buffers = *mBuffers;
    buffers.prepare();
    int count = 0;
    do {
        count = recvmmsg(mSocket.handle(), buffers.messages.data(), kSlots, MSG_DONTWAIT, nullptr);
    } while (count < 0 && (errno == EINTR || errno == ECONNREFUSED));
    if (count < 0) {
        return errno == EAGAIN ? ReceiveStatus::TimedOut : ReceiveStatus::Failed;
    }
    mRunCount = static_cast<std::size_t>(count);
    for (std::size_t i = 0; i < mRunCount; ++i) {
        mmsghdr& message = buffers.messages[i];
        const std::size_t segment = segmentSizeOf(message.msg_hdr);
        mRuns[i] = {.bytes = {&buffers.memory[i * kSlotSize], message.msg_len},
                    .segmentSize = segment == 0 ? message.msg_len : segment,
                    .source = fromNative(buffers.sources[i])};
    }
    return ReceiveStatus::Data;
}

ReceiveStatus BatchReceiver::wait(Timeout timeout, const Waker* waker)
{
    return waitReadable(mSocket.handle(), timeout, waker);
}

} // namespace gige::net
