#include "PacketRing.h"

#include "NetworkInterface.h"
#include "RingFrame.h"
#include "UdpSocket.h"

#include <atomic>
#include <cstdio>
#include <linux/if_ether.h>
#include <linux/if_packet.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/utsname.h>

namespace gige::net
{

namespace
{

constexpr std::size_t kBlockSize = 256 * 1024; // bytes; of whole frames, the rest is unused
constexpr std::size_t kBlocks = kRingMemory / kBlockSize;
constexpr std::size_t kCacheLine = 64;

bool setOption(NativeSocket socket, int name, int value)
{
    return setsockopt(socket, SOL_PACKET, name, &value, sizeof value) == 0;
}

/// Earlier kernels drop joined packets instead of telling how to cut them.
bool tellsAboutJoinedPackets()
{
    utsname system{};
    int major = 0;
    int minor = 0;
    return uname(&system) == 0 && std::sscanf(system.release, "%d.%d", &major, &minor) == 2 &&
           (major > 6 || (major == 6 && minor >= 2));
}

/// Of the interface by which this address's packets come; 0: not known.
unsigned interfaceIndex(Ipv4Address source)
{
    // What a machine sends to itself comes by the loopback interface, whatever the address.
    if (sourceAddressTowards(source) == source) {
        return if_nametoindex("lo");
    }
    const auto interface = interfaceReaching(source);
    return interface ? if_nametoindex(interface->name.c_str()) : 0;
}

/// Another processor has written them; by the time they are read they are here.
void prefetchHeaders(const std::uint8_t* frame)
{
    for (std::size_t at = 0; at < 3 * kCacheLine; at += kCacheLine) {
        __builtin_prefetch(frame + at);
    }
}

std::uint32_t& statusOf(std::uint8_t* frame)
{
    return reinterpret_cast<tpacket2_hdr*>(frame)->tp_status;
}

} // namespace

std::unique_ptr<PacketRing> PacketRing::open(const Flow& flow, std::size_t longest)
{
    const std::size_t frameSize =
        (frameOverhead() + longest + kCacheLine - 1) / kCacheLine * kCacheLine;
    if (!tellsAboutJoinedPackets() || frameSize > kBlockSize) {
        return nullptr;
    }
    SocketHandle socket(::socket(AF_PACKET, SOCK_RAW | SOCK_CLOEXEC, 0)); // receives nothing yet
    if (!socket) {
        return nullptr;
    }
    std::unique_ptr<PacketRing> ring(new PacketRing(std::move(socket), frameSize));
    return ring->map() && ring->bindTo(flow, longest) ? std::move(ring) : nullptr;
}

PacketRing::PacketRing(SocketHandle socket, std::size_t frameSize)
    : mSocket(std::move(socket)),
      mFrameSize(frameSize),
      mFramesPerBlock(kBlockSize / frameSize),
      mFrameCount(kBlocks * mFramesPerBlock)
{
}

bool PacketRing::map()
{
    const tpacket_req request{.tp_block_size = kBlockSize,
                              .tp_block_nr = kBlocks,
                              .tp_frame_size = static_cast<unsigned>(mFrameSize),
                              .tp_frame_nr = static_cast<unsigned>(mFrameCount)};
    if (!setOption(mSocket.get(), PACKET_VERSION, TPACKET_V2) ||
        !setOption(mSocket.get(), PACKET_VNET_HDR, 1) ||
        setsockopt(mSocket.get(), SOL_PACKET, PACKET_RX_RING, &request, sizeof request) != 0) {
        return false;
    }
    mMemory = MemoryMapping(
        mmap(nullptr, kRingMemory, PROT_READ | PROT_WRITE, MAP_SHARED, mSocket.get(), 0),
        kRingMemory);
    return static_cast<bool>(mMemory);
}

/// Only now packets come. Bound to one protocol, the socket gets none that go out.
bool PacketRing::bindTo(const Flow& flow, std::size_t longest)
{
    sockaddr_ll address{};
    address.sll_family = AF_PACKET;
    address.sll_protocol = htons(ETH_P_IP);
    address.sll_ifindex = static_cast<int>(interfaceIndex(flow.source));
    return address.sll_ifindex != 0 &&
           attachFilter(mSocket.get(), FlowFilter::OnlyFlow, flow, longest) &&
           bind(mSocket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

std::size_t PacketRing::take(std::span<DatagramRun> runs)
{
    release();
    std::size_t count = 0;
    while (count < runs.size() && mTaken < mFrameCount && isFilled(mNext)) {
        const std::uint8_t* const current = at(mNext);
        takeNext();
        prefetchHeaders(at(mNext));
        if (const auto run = decodeFrame({current, mFrameSize})) {
            runs[count++] = *run;
        }
    }
    return count;
}

bool PacketRing::dropThrough(const DatagramMark& datagram)
{
    release();
    Place place = mNext;
    for (std::size_t count = 1; count <= mFrameCount && isFilled(place); ++count) {
        const auto run = decodeFrame({at(place), mFrameSize});
        place = after(place);
        if (run && DatagramMark(*run) == datagram) {
            mNext = place;
            mTaken = count;
            release();
            return true;
        }
    }
    return false;
}

void PacketRing::dropAll()
{
    release();
    while (mTaken < mFrameCount && isFilled(mNext)) {
        takeNext();
    }
    release();
}

std::uint8_t* PacketRing::at(const Place& place) const
{
    return mMemory.get() + place.block * kBlockSize + place.frame * mFrameSize;
}

PacketRing::Place PacketRing::after(Place place) const
{
    if (++place.frame == mFramesPerBlock) {
        place.frame = 0;
        place.block = place.block + 1 == kBlocks ? 0 : place.block + 1;
    }
    return place;
}

bool PacketRing::isFilled(const Place& place) const
{
    const std::uint32_t status =
        std::atomic_ref(statusOf(at(place))).load(std::memory_order_acquire);
    return (status & TP_STATUS_USER) != 0;
}

void PacketRing::takeNext()
{
    mNext = after(mNext);
    ++mTaken;
}

/// Gives the frames that were taken back to the kernel.
void PacketRing::release()
{
    for (; mTaken > 0; --mTaken) {
        std::atomic_ref(statusOf(at(mOldest))).store(TP_STATUS_KERNEL, std::memory_order_release);
        mOldest = after(mOldest);
    }
}

} // namespace gige::net
