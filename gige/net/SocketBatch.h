/// POSIX only.
#ifndef TELVO_GIGE_NET_SOCKETBATCH_H
#define TELVO_GIGE_NET_SOCKETBATCH_H

#include "DatagramRun.h"
#include "SlotSizing.h"
#include "SocketHandle.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <span>

namespace gige::net
{

/// Takes many messages of a UDP socket per system call. For one thread.
class SocketBatch
{
  public:
    /// @param socket  borrowed; joins datagrams from now on, if the system can
    explicit SocketBatch(NativeSocket socket);
    ~SocketBatch();
    SocketBatch(const SocketBatch&) = delete;
    SocketBatch& operator=(const SocketBatch&) = delete;

    /// Takes what is there, without waiting, into `runs`; they are valid until the next call.
    /// @return how many; none: the socket failed
    std::optional<std::size_t> take(std::span<DatagramRun, kMostSlots> runs);
    /// Whether the last take took as much as it could, so that more may be waiting.
    bool isFull() const;

  private:
    struct Buffers; // memory, and what the system call needs

    NativeSocket mSocket;
    std::unique_ptr<Buffers> mBuffers;
};

} // namespace gige::net

#endif
