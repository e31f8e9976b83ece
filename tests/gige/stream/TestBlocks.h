/// Blocks as a device sends them, and a host side that records what the assembler does.
#ifndef TELVO_TESTS_GIGE_STREAM_TESTBLOCKS_H
#define TELVO_TESTS_GIGE_STREAM_TESTBLOCKS_H

#include "BlockAssembler.h"
#include "GvspHeader.h"
#include "GvspLeader.h"
#include "PixelFormat.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace gige::stream
{

using wire::Bytes;
using namespace std::chrono_literals;

/// A device's image of `size` x 1 pixels, cut into packets of `dataSize` bytes.
struct TestBlock {
    std::uint64_t id = 1;
    std::size_t size = 1000;
    std::size_t dataSize = 100;
    bool extendedIds = false;
    std::uint64_t timestamp = 0; // 0: 1000 times the id

    std::uint32_t dataPackets() const
    {
        return static_cast<std::uint32_t>((size + dataSize - 1) / dataSize);
    }
    std::uint32_t trailerId() const { return dataPackets() + 1; }

    /// Differs from block to block and from byte to byte.
    Bytes image() const
    {
        Bytes bytes(size);
        for (std::size_t i = 0; i < size; ++i) {
            bytes[i] = static_cast<std::uint8_t>(i * 7 + i / 256 + id * 13 + 1);
        }
        return bytes;
    }

    /// Packet 0 is the leader, the last the trailer.
    Bytes packet(std::uint32_t packetId) const
    {
        if (packetId == 0) {
            const auto body =
                encode(wire::ImageLeader{.timestamp = timestamp == 0 ? id * 1000 : timestamp,
                                         .image = {.pixelFormat = wire::kPixelMono8,
                                                   .width = static_cast<std::uint32_t>(size),
                                                   .height = 1}});
            return joined(wire::GvspFormat::Leader, 0, {body.begin(), body.end()});
        }
        if (packetId == trailerId()) {
            const auto body = encode(wire::ImageTrailer{.height = 1});
            return joined(wire::GvspFormat::Trailer, packetId, {body.begin(), body.end()});
        }
        const Bytes bytes = image();
        const std::size_t begin = (packetId - 1) * dataSize;
        const std::size_t end = std::min(begin + dataSize, size);
        return joined(wire::GvspFormat::Payload, packetId,
                      {bytes.begin() + static_cast<std::ptrdiff_t>(begin),
                       bytes.begin() + static_cast<std::ptrdiff_t>(end)});
    }

    Bytes joined(wire::GvspFormat format, std::uint32_t packetId, const Bytes& body,
                 wire::GvcpStatus status = wire::GvcpStatus::Success) const
    {
        const wire::GvspHeader header{.status = status,
                                      .blockId = id,
                                      .format = format,
                                      .extendedIds = extendedIds,
                                      .packetId = packetId};
        Bytes bytes(header.size() + body.size());
        encode(header, bytes);
        std::ranges::copy(body, bytes.begin() + static_cast<std::ptrdiff_t>(header.size()));
        return bytes;
    }

    /// 0, 1, 2 … trailer.
    std::vector<std::uint32_t> order() const
    {
        std::vector<std::uint32_t> ids(trailerId() + 1);
        for (std::uint32_t i = 0; i < ids.size(); ++i) {
            ids[i] = i;
        }
        return ids;
    }
    std::vector<std::uint32_t> orderWithout(const std::vector<std::uint32_t>& lost) const
    {
        std::vector<std::uint32_t> ids = order();
        std::erase_if(ids, [&](std::uint32_t one) { return std::ranges::count(lost, one) > 0; });
        return ids;
    }
};

/// A completed buffer as it was when it was completed.
struct Completed {
    BlockInfo info;
    Bytes bytes; // the whole buffer
    bool operator==(const Completed&) const = default;
};

/// An assembler with queued buffers and a clock that the test moves.
class AssemblerBench : public AssemblerHost
{
  public:
    void queueBuffers(std::size_t count, std::size_t size = 1000)
    {
        for (std::size_t i = 0; i < count; ++i) {
            mMemory.emplace_back(size, std::uint8_t{0xEE});
            mBuffers.push_back(std::make_unique<StreamBuffer>(mMemory.back()));
            mQueued.emplace_back(mBuffers.back().get(), now);
        }
    }

    void feed(const Bytes& packet)
    {
        const auto header = wire::decodeGvspHeader(packet);
        if (header) {
            assembler.onPacket(*header, wire::ByteView(packet).subspan(header->size()), now);
        }
    }
    void feed(const TestBlock& block, const std::vector<std::uint32_t>& packetIds)
    {
        for (const std::uint32_t id : packetIds) {
            feed(block.packet(id));
        }
    }
    void feed(const TestBlock& block) { feed(block, block.order()); }

    void advance(Clock::duration time)
    {
        now += time;
        assembler.onTime(now);
    }

    std::vector<BlockResult> results() const
    {
        std::vector<BlockResult> list;
        for (const Completed& one : completed) {
            list.push_back(one.info.result);
        }
        return list;
    }

    StreamBuffer* takeBuffer() override
    {
        if (mQueued.empty()) {
            return nullptr;
        }
        StreamBuffer* const buffer = mQueued.front().first;
        mQueued.pop_front();
        return buffer;
    }
    std::optional<Time> waitingSince() override
    {
        return mQueued.empty() ? std::nullopt : std::optional(mQueued.front().second);
    }
    void complete(StreamBuffer& buffer) override
    {
        completed.push_back({buffer.info(), Bytes(buffer.memory().begin(), buffer.memory().end())});
    }
    void requestResend(const ResendRequest& request) override { requests.push_back(request); }

    BlockAssembler assembler{*this};
    Time now{1h};
    std::vector<Completed> completed;
    std::vector<ResendRequest> requests;

  private:
    std::deque<Bytes> mMemory;
    std::vector<std::unique_ptr<StreamBuffer>> mBuffers;
    std::deque<std::pair<StreamBuffer*, Time>> mQueued;
};

} // namespace gige::stream

#endif
