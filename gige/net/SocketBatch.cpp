#include "SocketBatch.h"

#include "PosixSocket.h"
#include "SlotSizing.h"

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

/// A message lies in its slot. One that is longer goes on in the slot's overflow, whose beginning
/// is left free for the part in the slot: so nothing is lost before the slots have grown. Overflows
/// that nothing was written to take up no memory.
struct SocketBatch::Buffers {
    struct alignas(cmsghdr) Control {
        std::array<std::uint8_t, kControlSize> bytes;
    };
    using Memory = std::unique_ptr<std::uint8_t[]>; // NOLINT(modernize-avoid-c-arrays): not zeroed

    SlotSizing sizing;
    SlotLayout layout;
    std::size_t used = 0; // messages that the last call filled
    Memory slots = std::make_unique_for_overwrite<std::uint8_t[]>(kSlotMemory);
    Memory overflows = std::make_unique_for_overwrite<std::uint8_t[]>(kMostSlots * kLongestMessage);
    std::array<std::array<iovec, 2>, kMostSlots> vectors{};
    std::array<sockaddr_in, kMostSlots> sources{};
    std::array<Control, kMostSlots> controls{};
    std::array<mmsghdr, kMostSlots> messages{};

    Buffers() { arrange(); }

    std::uint8_t* slot(std::size_t i) { return &slots[i * layout.slotSize]; }
    std::uint8_t* overflow(std::size_t i) { return &overflows[i * kLongestMessage]; }

    void arrange()
    {
        layout = sizing.layout();
        for (std::size_t i = 0; i < layout.count; ++i) {
            vectors[i] = {{{.iov_base = slot(i), .iov_len = layout.slotSize},
                           {.iov_base = overflow(i) + layout.slotSize,
                            .iov_len = kLongestMessage - layout.slotSize}}};
        }
        prepare(layout.count);
    }

    /// The call overwrites the lengths of those that it fills.
    void prepare(std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i) {
            messages[i].msg_hdr = {.msg_name = &sources[i],
                                   .msg_namelen = sizeof sources[i],
                                   .msg_iov = vectors[i].data(),
                                   .msg_iovlen = vectors[i].size(),
                                   .msg_control = &controls[i],
                                   .msg_controllen = kControlSize,
                                   .msg_flags = 0};
        }
    }

    void prepareNextCall()
    {
        if (used > 0) {
            sizing.note(
                std::ranges::max(std::span(messages).first(used), {}, &mmsghdr::msg_len).msg_len);
            sizing.layout() == layout ? prepare(used) : arrange();
            used = 0;
        }
    }

    DatagramRun run(std::size_t i)
    {
        const std::size_t length = messages[i].msg_len;
        const std::size_t segment = segmentSizeOf(messages[i].msg_hdr);
        return {.bytes = {length > layout.slotSize ? wholeInOverflow(i) : slot(i), length},
                .segmentSize = segment == 0 ? length : segment,
                .source = fromNative(sources[i])};
    }

    const std::uint8_t* wholeInOverflow(std::size_t i)
    {
        std::memcpy(overflow(i), slot(i), layout.slotSize);
        return overflow(i);
    }
};

SocketBatch::SocketBatch(NativeSocket socket)
    : mSocket(socket), mBuffers(std::make_unique<Buffers>())
{
    // Kernels without it deliver the datagrams one by one.
    const int on = 1;
    setsockopt(mSocket, SOL_UDP, UDP_GRO, &on, sizeof on);
}

SocketBatch::~SocketBatch() = default;

std::optional<std::size_t> SocketBatch::take(std::span<DatagramRun, kMostSlots> runs)
{
    Buffers& buffers = *mBuffers;
    buffers.prepareNextCall();
    int count = 0;
    do {
        count = recvmmsg(mSocket, buffers.messages.data(),
                         static_cast<unsigned>(buffers.layout.count), MSG_DONTWAIT, nullptr);
    } while (count < 0 && (errno == EINTR || errno == ECONNREFUSED));
    if (count < 0) {
        return errno == EAGAIN ? std::optional<std::size_t>(0) : std::nullopt;
    }
    buffers.used = static_cast<std::size_t>(count);
    for (std::size_t i = 0; i < buffers.used; ++i) {
        runs[i] = buffers.run(i);
    }
    return buffers.used;
}

bool SocketBatch::isFull() const
{
    return mBuffers->used == mBuffers->layout.count;
}

} // namespace gige::net
