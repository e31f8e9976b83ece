/**
 * Block assembly from arbitrary packets. The input is a sequence of records: 2 bytes length, 1 byte
 * time step in milliseconds, then that many bytes of packet.
 */
#include "BlockAssembler.h"
#include "GvspHeader.h"
#include "PacketArithmetic.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

using namespace gige::stream;
namespace wire = gige::wire;

namespace
{

constexpr std::size_t kBuffers = 3;
constexpr std::size_t kBufferSize = 2000; // bytes
constexpr std::size_t kRecordHeader = 3;

/// Buffers that are queued again as soon as they are completed.
class Host : public AssemblerHost
{
  public:
    Host()
    {
        for (std::size_t i = 0; i < kBuffers; ++i) {
            mMemory[i].resize(kBufferSize);
            mBuffers[i].setMemory(mMemory[i]);
            mFree.push_back(&mBuffers[i]);
        }
    }

    std::size_t freeCount() const { return mFree.size(); }

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
    void complete(StreamBuffer& buffer) override
    {
        if (buffer.info().bytes > kBufferSize) {
            std::abort();
        }
        mFree.push_back(&buffer);
    }
    void requestResend(const ResendRequest& request) override
    {
        if (request.packets.first > request.packets.last) {
            std::abort();
        }
    }

  private:
    std::array<std::vector<std::uint8_t>, kBuffers> mMemory;
    std::array<StreamBuffer, kBuffers> mBuffers;
    std::vector<StreamBuffer*> mFree;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Host host;
    BlockAssembler assembler(host);
    assembler.setSettings(
        {.firstPacketTimeout = std::chrono::milliseconds(200), .maximumPendingResends = 16});
    Time now{};
    wire::ByteView rest(data, size);
    while (rest.size() >= kRecordHeader) {
        const std::size_t length =
            std::min<std::size_t>(wire::getU16(rest.data()), rest.size() - kRecordHeader);
        now += std::chrono::milliseconds(rest[2]);
        const wire::ByteView packet = rest.subspan(kRecordHeader, length);
        rest = rest.subspan(kRecordHeader + length);
        const auto header = wire::decodeGvspHeader(packet);
        if (header && !wire::isTestPacket(*header)) {
            assembler.onPacket(*header, packet.subspan(header->size()), now);
        }
        assembler.onTime(now);
        static_cast<void>(assembler.nextTime());
    }
    assembler.abort();
    if (host.freeCount() != kBuffers) { // every buffer comes back
        std::abort();
    }
    return 0;
}
