#ifndef TELVO_GIGE_NET_BATCHSENDER_H
#define TELVO_GIGE_NET_BATCHSENDER_H

#include "UdpSocket.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace gige::net
{

/// One datagram in two slices, both borrowed; either may be empty.
struct PacketSlices {
    std::span<const std::uint8_t> header{};
    std::span<const std::uint8_t> payload{};
    std::size_t size() const { return header.size() + payload.size(); }
};

/// How packets travel through the sending system.
enum class SendMode : std::uint8_t {
    Joined, // those of equal length together, where the system can: the least work
    Single, // each is a datagram of its own from the start, as packets come from a cable
};

/// Sends many datagrams per system call, without copying them first. On Linux datagrams of equal
/// length that follow each other (the last may be shorter) travel joined through the kernel
/// (UDP_SEGMENT) unless the mode forbids it; where that is refused, and elsewhere, they go one by
/// one. For one thread; the socket is borrowed for the sender's life.
class BatchSender
{
  public:
    explicit BatchSender(UdpSocket& socket, SendMode mode = SendMode::Joined);
    ~BatchSender();
    BatchSender(const BatchSender&) = delete;
    BatchSender& operator=(const BatchSender&) = delete;

    /// Sends in order, waiting for room. Allocates nothing.
    /// @return packets handed to the system; less than all: the next one failed
    std::size_t send(const Endpoint& destination, std::span<const PacketSlices> packets);

  private:
    struct Batch; // what the system call needs

    UdpSocket& mSocket;
    std::unique_ptr<Batch> mBatch;
};

} // namespace gige::net

#endif
