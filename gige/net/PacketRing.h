#ifndef TELVO_GIGE_NET_PACKETRING_H
#define TELVO_GIGE_NET_PACKETRING_H

#include "DatagramMark.h"
#include "DatagramRun.h"
#include "FlowFilter.h"
#include "MemoryMapping.h"
#include "SocketHandle.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace gige::net
{

/// Memory of a ring, bytes: as much as is asked for as a socket's receive buffer.
constexpr std::size_t kRingMemory = std::size_t{32} << 20;

/**
 * Linux only: one flow's packets in memory that the kernel shares with this process, so that taking
 * them needs no system call and no copy. Of frames of equal size (TPACKET_V2): a frame can be read
 * as soon as it is filled, while blocks of packed frames (TPACKET_V3) wait until they are full, or
 * for a timeout of whole ticks of the kernel's clock. For one thread.
 */
class PacketRing
{
  public:
    /// @param longest  bytes of the longest IP datagram that it takes
    /// @return null: there is no privilege for it, or the system does not tell how joined packets
    ///         are to be cut (Linux before 6.2)
    static std::unique_ptr<PacketRing> open(const Flow& flow, std::size_t longest);

    /// Takes what is there, without waiting, into `runs`; they are valid until the next call.
    /// @return how many
    std::size_t take(std::span<DatagramRun> runs);

    /// Drops what is there up to this datagram.
    /// @return false: it is not there, and nothing was dropped
    bool dropThrough(const DatagramMark& datagram);
    /// Drops everything that is there.
    void dropAll();

    /// For the waits.
    NativeSocket handle() const { return mSocket.get(); }

  private:
    PacketRing(SocketHandle socket, std::size_t frameSize);

    bool map();
    bool bindTo(const Flow& flow, std::size_t longest);
    std::uint8_t* frame(std::size_t index) const;
    bool isFilled(std::size_t index) const;
    void release();
    std::size_t after(std::size_t index) const { return index + 1 == mFrameCount ? 0 : index + 1; }

    SocketHandle mSocket;
    std::size_t mFrameSize; // bytes
    std::size_t mFramesPerBlock;
    std::size_t mFrameCount;
    MemoryMapping mMemory;
    std::size_t mNext = 0;  // frame that is read next
    std::size_t mTaken = 0; // frames before it that the last take still holds
};

} // namespace gige::net

#endif
