/// What block assembly costs per packet when every packet comes by itself, the copy of its data
/// included: without losses, with losses that are answered or not, and under packets whose ids tell
/// of endless losses. Pure, with a clock that the benchmark moves.
#include "BlockAssembler.h"
#include "GvspHeader.h"
#include "GvspLeader.h"
#include "PacketArithmetic.h"
#include "PixelFormat.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdint>
#include <deque>
#include <vector>

using namespace gige::stream;
using namespace std::chrono_literals;
namespace wire = gige::wire;

namespace
{

constexpr std::size_t kBuffers = 600;
constexpr std::uint32_t kResendLimit = 1000; // packets under re-request at once

/// Queues every buffer again at once, and notes what it is asked for.
class Host : public AssemblerHost
{
  public:
    explicit Host(std::size_t bufferSize) : mMemory(bufferSize)
    {
        for (StreamBuffer& buffer : mBuffers) {
            buffer.setMemory(mMemory); // one for all: only the bookkeeping is looked at
            mFree.push_back(&buffer);
        }
    }

    StreamBuffer* takeBuffer() override
    {
        if (mFree.empty()) {
            return nullptr;
        }
        StreamBuffer* const buffer = mFree.back();
        mFree.pop_back();
        return buffer;
    }
    std::optional<Time> waitingSince() override
    {
        return mFree.empty() ? std::nullopt : std::optional(Time{});
    }
    void complete(StreamBuffer& buffer) override { mFree.push_back(&buffer); }
    void requestResend(const ResendRequest& request) override { requests.push_back(request); }

    std::deque<ResendRequest> requests;

  private:
    std::vector<std::uint8_t> mMemory;
    std::vector<StreamBuffer> mBuffers = std::vector<StreamBuffer>(kBuffers);
    std::vector<StreamBuffer*> mFree;
};

struct Stream {
    std::size_t imageBytes = 0;
    std::size_t dataBytes = 0; // per packet
    Clock::duration step{};    // from packet to packet
};

/// 1280x1024 in packets of 1500 bytes at 115 MB/s.
constexpr Stream kPictures{.imageBytes = 1280 * 1024, .dataBytes = 1464, .step = 12700ns};
/// Small pictures, each in few packets.
constexpr Stream kSmallPictures{.imageBytes = 5000, .dataBytes = 1464, .step = 12700ns};

/// Feeds one packet after the other, each followed by what the receiver does after a batch.
class Bench
{
  public:
    explicit Bench(const Stream& stream) : mStream(stream), mHost(stream.imageBytes)
    {
        mAssembler.setSettings({.maximumPendingResends = kResendLimit});
    }

    void feed(const wire::GvspHeader& header, wire::ByteView body)
    {
        mNow += mStream.step;
        mAssembler.onPacket(header, body, mNow);
        mAssembler.onTime(mNow);
        benchmark::DoNotOptimize(mAssembler.nextTime());
    }

    void feed(std::uint64_t blockId, std::uint32_t packetId)
    {
        wire::GvspHeader header{.blockId = blockId, .extendedIds = true, .packetId = packetId};
        if (packetId == 0) {
            header.format = wire::GvspFormat::Leader;
            feed(header, leader(blockId));
        } else if (packetId == trailerId()) {
            header.format = wire::GvspFormat::Trailer;
            feed(header, {});
        } else {
            const std::size_t begin = (packetId - 1) * mStream.dataBytes;
            feed(header, wire::ByteView(mImage).subspan(
                             begin, std::min(mStream.dataBytes, mStream.imageBytes - begin)));
        }
    }

    std::uint32_t trailerId() const
    {
        return static_cast<std::uint32_t>(
                   wire::dataPacketCount(mStream.imageBytes, mStream.dataBytes)) +
               1;
    }
    Host& host() { return mHost; }
    const StreamStatistics& statistics() const { return mAssembler.statistics(); }

  private:
    wire::ByteView leader(std::uint64_t blockId)
    {
        mLeader = encode(
            wire::ImageLeader{.timestamp = blockId,
                              .image = {.pixelFormat = wire::kPixelMono8,
                                        .width = static_cast<std::uint32_t>(mStream.imageBytes),
                                        .height = 1}});
        return mLeader;
    }

    Stream mStream;
    Host mHost;
    BlockAssembler mAssembler{mHost};
    Time mNow{1h};
    std::vector<std::uint8_t> mImage = std::vector<std::uint8_t>(mStream.imageBytes);
    decltype(encode(wire::ImageLeader{})) mLeader{};
};

/// One packet after the other; those that are lost are told and left out.
class Sender
{
  public:
    Sender(Bench& bench, std::uint32_t lossPeriod) : mBench(bench), mLossPeriod(lossPeriod) {}

    void sendNext()
    {
        if (++mPacketId > mBench.trailerId()) {
            mPacketId = 0;
            ++mBlockId;
        }
        if (mLossPeriod != 0 && ++mSent % mLossPeriod == 0 && mPacketId != 0) {
            sendNext();
        } else {
            mBench.feed(mBlockId, mPacketId);
        }
    }

  private:
    Bench& mBench;
    std::uint32_t mLossPeriod; // every so many packets one is lost; 0: none
    std::uint64_t mBlockId = 0;
    std::uint32_t mPacketId = 0xFFFF'FFFE;
    std::uint64_t mSent = 0;
};

void report(benchmark::State& state, const Bench& bench)
{
    const StreamStatistics& all = bench.statistics();
    state.counters["blocks"] = static_cast<double>(all.blocksReceived);
    state.counters["failed"] = static_cast<double>(all.blocksFailed);
    state.counters["resent"] = static_cast<double>(all.packetsResent);
}

void withoutLosses(benchmark::State& state, const Stream& stream)
{
    Bench bench(stream);
    Sender sender(bench, 0);
    for ([[maybe_unused]] auto _ : state) {
        sender.sendNext();
    }
    report(state, bench);
}
BENCHMARK_CAPTURE(withoutLosses, pictures, kPictures);
BENCHMARK_CAPTURE(withoutLosses, smallPictures, kSmallPictures);

/// Every hundredth packet is lost, and sent again a hundred packets after it was asked for.
void lossesAnswered(benchmark::State& state, const Stream& stream)
{
    Bench bench(stream);
    Sender sender(bench, 100);
    std::uint64_t packets = 0;
    std::deque<std::uint64_t> due;
    for ([[maybe_unused]] auto _ : state) {
        auto& requests = bench.host().requests;
        due.resize(requests.size(), packets + 100);
        if (!due.empty() && due.front() <= packets) {
            const ResendRequest request = requests.front();
            requests.pop_front();
            due.pop_front();
            bench.feed(request.blockId, request.packets.first);
        } else {
            sender.sendNext();
        }
        ++packets;
    }
    report(state, bench);
}
BENCHMARK_CAPTURE(lossesAnswered, pictures, kPictures);
BENCHMARK_CAPTURE(lossesAnswered, smallPictures, kSmallPictures);

/// The same without answers: many blocks wait behind those that lack packets.
void lossesUnanswered(benchmark::State& state, const Stream& stream)
{
    Bench bench(stream);
    Sender sender(bench, 100);
    for ([[maybe_unused]] auto _ : state) {
        bench.host().requests.clear();
        sender.sendNext();
    }
    report(state, bench);
}
BENCHMARK_CAPTURE(lossesUnanswered, pictures, kPictures);
BENCHMARK_CAPTURE(lossesUnanswered, smallPictures, kSmallPictures);

/// Trailers alone, each of a block of its own and with a packet id as large as it can be.
void trailersAlone(benchmark::State& state)
{
    Stream stream = kPictures;
    stream.step = 1s / 300;
    Bench bench(stream);
    wire::GvspHeader header{.format = wire::GvspFormat::Trailer, .packetId = 0xFF'FFFF};
    for ([[maybe_unused]] auto _ : state) {
        bench.host().requests.clear();
        header.blockId = wire::nextBlockId(header.blockId, false);
        bench.feed(header, {});
    }
    report(state, bench);
}
BENCHMARK(trailersAlone);

} // namespace

BENCHMARK_MAIN();
