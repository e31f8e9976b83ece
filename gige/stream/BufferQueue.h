#ifndef TELVO_GIGE_STREAM_BUFFERQUEUE_H
#define TELVO_GIGE_STREAM_BUFFERQUEUE_H

#include "StreamBuffer.h"
#include "StreamSettings.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>

namespace gige::stream
{

/// Buffers one behind the other, without allocating: each carries the link to the next.
class BufferChain
{
  public:
    StreamBuffer* first() const { return mFirst; }
    void push(StreamBuffer& buffer);
    void pushFirst(StreamBuffer& buffer);
    /// Null if there is none.
    StreamBuffer* pop();

  private:
    StreamBuffer* mFirst = nullptr;
    StreamBuffer* mLast = nullptr;
};

enum class [[nodiscard]] RetrieveStatus : std::uint8_t{Buffer, TimedOut, Woken};

struct [[nodiscard]] Retrieved {
    RetrieveStatus status = RetrieveStatus::TimedOut;
    StreamBuffer* buffer = nullptr; // with RetrieveStatus::Buffer only; its info tells the rest
};

/// The host's end of a queue of buffers: the completed ones. Threads: any.
class CompletedBuffers
{
  public:
    /// Number of wakeRetrievals() so far.
    std::uint64_t wakeCount() const;
    /// Ends every retrieval that waits now; later ones work as ever.
    void wakeRetrievals();

    /// Takes the buffer completed first, waiting for it; ended by wakeRetrievals().
    Retrieved retrieve(std::chrono::milliseconds timeout);
    /// The same, but a wake since `wakes` was read counts too, even if a buffer is there: a host
    /// that reads it first, then its own stop flag, misses no stop.
    Retrieved retrieve(std::chrono::milliseconds timeout, std::uint64_t wakes);

  protected:
    CompletedBuffers() = default;
    ~CompletedBuffers() = default;

    mutable std::mutex mLock;
    std::condition_variable mCompleted;
    BufferChain mDone; // completed

  private:
    std::uint64_t mWakes = 0;
};

/// The buffers' way round: queued by the host, taken and completed by the receiving thread,
/// retrieved by the host. Any thread may call anything; mLock guards all members.
class BufferQueue : public CompletedBuffers
{
  public:
    /// @return false: the buffer is in a stream already
    bool queue(StreamBuffer& buffer, Time now);
    /// The same before all others: while the processor's cache still has its memory, filling it
    /// costs a third less.
    bool queueFirst(StreamBuffer& buffer, Time now);
    /// The next buffer to fill; null if there is none.
    StreamBuffer* take();
    /// Since when the queued buffer has been waiting that waits longest.
    std::optional<Time> waitingSince() const;
    void complete(StreamBuffer& buffer);
    /// Completes all queued buffers as Aborted.
    void abort();

    /// Forgets all buffers: they are their owners' again.
    void releaseAll();

  private:
    static bool enter(StreamBuffer& buffer, Time now);

    BufferChain mQueued;
};

} // namespace gige::stream

#endif
