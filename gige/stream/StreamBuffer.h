#ifndef TELVO_GIGE_STREAM_STREAMBUFFER_H
#define TELVO_GIGE_STREAM_STREAMBUFFER_H

#include "GvspLeader.h"
#include "StreamSettings.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace gige::stream
{

/// How a block ended.
enum class [[nodiscard]] BlockResult : std::uint8_t{
    Ok,             // all of it is there
    ImageError,     // packets missing at its time limit, or contradictory
    ResendsFailure, // packets missing although they were asked for again
    BufferTooSmall, // longer than the buffer; the front of it is there
    Aborted,
    TimedOut, // no block began within the first-packet timeout
};

/// What is known of the block in a completed buffer.
struct BlockInfo {
    BlockResult result = BlockResult::Aborted;
    std::uint64_t blockId = 0;
    std::uint64_t timestamp = 0; // ticks; 0 without leader
    std::optional<wire::PayloadType> payloadType{};
    std::optional<wire::ImageLayout> image{};
    std::uint64_t bytes = 0;          // up to the last byte received, at most the buffer's size
    std::uint32_t missingPackets = 0; // as far as the block's length is known
    bool operator==(const BlockInfo&) const = default;
};

/// Memory for one block, borrowed. From queueing until it is retrieved it belongs to the stream:
/// nobody else touches it, and it stays where it is.
class StreamBuffer
{
  public:
    StreamBuffer() = default;
    explicit StreamBuffer(std::span<std::uint8_t> memory) : mMemory(memory) {}
    StreamBuffer(const StreamBuffer&) = delete;
    StreamBuffer& operator=(const StreamBuffer&) = delete;

    void setMemory(std::span<std::uint8_t> memory) { mMemory = memory; }
    std::span<std::uint8_t> memory() const { return mMemory; }

    /// Of the last block; valid once retrieved.
    const BlockInfo& info() const { return mInfo; }
    /// For whoever completes the buffer.
    void setInfo(const BlockInfo& info) { mInfo = info; }

  private:
    friend class BufferQueue;
    friend class CompletedBuffers;
    friend class BufferChain;

    std::span<std::uint8_t> mMemory{};
    BlockInfo mInfo{};
    // The queue's, guarded by its lock.
    StreamBuffer* mNext = nullptr;
    Time mQueuedAt;
    bool mInStream = false; // queued, being filled, or completed and not yet retrieved
};

} // namespace gige::stream

#endif
