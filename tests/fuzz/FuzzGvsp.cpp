/// Block assembly from arbitrary packets. The input: 1 byte packets under re-request, 1 byte
/// requests per packet, then records: 2 bytes length, 1 byte time step, then that many bytes of
/// packet. Steps up to 127 are tenths of a millisecond, for resends; those above, milliseconds.
/// After a step of 0 the packet comes in one batch with that before.
#include "BlockAssembler.h"
#include "GvspHeader.h"
#include "PacketArithmetic.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace gige::stream;
namespace wire = gige::wire;

namespace
{

constexpr std::size_t kBuffers = 6;
constexpr std::size_t kOpenBlocks = 4;
constexpr std::size_t kBufferSize = 400; // bytes
constexpr std::size_t kSettingBytes = 2;
constexpr std::size_t kRecordHeader = 3;

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

/// Buffers that are queued again as soon as they are completed.
class Host : public AssemblerHost
{
  public:
    Host()
    {
        for (std::size_t i = 0; i < kBuffers; ++i) {
            mBuffers[i].setMemory(mMemory[i]);
            mFree[i] = &mBuffers[i];
        }
    }

    std::size_t freeCount() const { return mFreeCount; }

    StreamBuffer* takeBuffer() override { return mFreeCount == 0 ? nullptr : mFree[--mFreeCount]; }
    std::optional<Time> waitingSince() override
    {
        return mFreeCount == 0 ? std::nullopt : std::optional(Time{});
    }
    void complete(StreamBuffer& buffer) override
    {
        require(buffer.info().bytes <= kBufferSize);
        require(mFreeCount < kBuffers);
        mFree[mFreeCount++] = &buffer;
    }
    void requestResend(const ResendRequest& request) override
    {
        require(request.packets.first <= request.packets.last);
    }

  private:
    std::array<std::array<std::uint8_t, kBufferSize>, kBuffers> mMemory{};
    std::array<StreamBuffer, kBuffers> mBuffers;
    std::array<StreamBuffer*, kBuffers> mFree{};
    std::size_t mFreeCount = kBuffers;
};

Clock::duration stepOf(std::uint8_t byte)
{
    return byte < 128 ? std::chrono::microseconds(100 * byte) : std::chrono::milliseconds(byte);
}

StreamSettings settingsOf(wire::ByteView bytes)
{
    return {.firstPacketTimeout = std::chrono::milliseconds(200),
            .packetTimeout = std::chrono::milliseconds(300),
            .imageTimeout = std::chrono::milliseconds(400),
            .maximumPendingResends = bytes[0],
            .maximumRequestsPerPacket = bytes[1] % 4U};
}

void feed(BlockAssembler& assembler, wire::ByteView packet, Time now)
{
    const auto header = wire::decodeGvspHeader(packet);
    if (header && !wire::isTestPacket(*header)) {
        assembler.onPacket(*header, packet.subspan(header->size()), now);
    }
}

/// Lets the time pass, in between also to when there is something to do.
void pass(BlockAssembler& assembler, Time& now, Clock::duration step)
{
    const Time end = now + step;
    assembler.onTime(now);
    const auto next = assembler.nextTime();
    if (next && *next < end) {
        now = std::max(now, *next);
        assembler.onTime(now);
    }
    now = end;
    assembler.onTime(now);
    (void)assembler.packetsToCome();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < kSettingBytes) {
        return 0;
    }
    Host host;
    BlockAssembler assembler(host, kOpenBlocks);
    wire::ByteView rest(data, size);
    assembler.setSettings(settingsOf(rest));
    rest = rest.subspan(kSettingBytes);
    Time now{};
    while (rest.size() >= kRecordHeader) {
        const std::size_t length =
            std::min<std::size_t>(wire::getU16(rest.data()), rest.size() - kRecordHeader);
        if (const std::uint8_t step = rest[2]; step != 0) {
            pass(assembler, now, stepOf(step));
        }
        feed(assembler, rest.subspan(kRecordHeader, length), now);
        rest = rest.subspan(kRecordHeader + length);
    }
    assembler.abort();
    require(host.freeCount() == kBuffers); // every buffer comes back
    return 0;
}
