#ifndef TELVO_GIGE_NET_PACKETRING_H
#define TELVO_GIGE_NET_PACKETRING_H

#include "DatagramRun.h"
#include "FlowFilter.h"
#include "SocketHandle.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <sys/mman.h>
#include <utility>

namespace gige::net
{

/// Owns memory that is mapped into this process.
class MemoryMapping
{
  public:
    MemoryMapping() = default;
    /// @param start  what mmap returned
    MemoryMapping(void* start, std::size_t size)
        : mStart(start == MAP_FAILED ? nullptr : start), mSize(size)
    {
    }
    ~MemoryMapping() { reset(); }
    MemoryMapping(MemoryMapping&& other) noexcept
        : mStart(std::exchange(other.mStart, nullptr)), mSize(other.mSize)
    {
    }
    MemoryMapping& operator=(MemoryMapping&& other) noexcept
    {
        reset();
        mStart = std::exchange(other.mStart, nullptr);
        mSize = other.mSize;
        return *this;
    }
    MemoryMapping(const MemoryMapping&) = delete;
    MemoryMapping& operator=(const MemoryMapping&) = delete;

    explicit operator bool() const { return mStart != nullptr; }
    std::uint8_t* get() const { return static_cast<std::uint8_t*>(mStart); }
    void reset()
    {
        if (mStart != nullptr) {
            munmap(std::exchange(mStart, nullptr), mSize);
        }
    }

  private:
    void* mStart = nullptr;
    std::size_t mSize = 0; // bytes
};

/// Memory of a ring, bytes: as much as is asked for as a socket's receive buffer.
constexpr std::size_t kRingMemory = std::size_t{32} << 20;

/// Linux only: one flow's packets in memory that the kernel shares with this process, so that
/// taking them needs no system call and no copy. Of frames of equal size (TPACKET_V2): a frame can
/// be read as soon as it is filled, while blocks of packed frames (TPACKET_V3) wait until they are
/// full, or for a timeout of whole ticks of the kernel's clock. For one thread.
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
    /// A frame by its block and its place in there: going on to the next divides nothing, which
    /// would take longer than all else that is done with a packet's headers.
    struct Place {
        std::size_t block = 0;
        std::size_t frame = 0;
    };

    PacketRing(SocketHandle socket, std::size_t frameSize);

    bool map();
    bool bindTo(const Flow& flow, std::size_t longest);
    std::uint8_t* at(const Place& place) const;
    Place after(Place place) const;
    bool isFilled(const Place& place) const;
    void takeNext();
    void release();

    SocketHandle mSocket;
    std::size_t mFrameSize; // bytes
    std::size_t mFramesPerBlock;
    std::size_t mFrameCount;
    MemoryMapping mMemory;
    Place mOldest{};        // first of those that the last take still holds
    Place mNext{};          // is read next
    std::size_t mTaken = 0; // frames from the oldest on, before the next
};

} // namespace gige::net

#endif
