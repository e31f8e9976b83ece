/// Every GVCP decoder on a datagram from the network.
#include "DiscoveryAck.h"
#include "GvcpHeader.h"
#include "GvcpPayloads.h"
#include "GvcpStatus.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace gige::wire;

namespace
{

/// What decodes has to encode to the same bytes again.
template <typename Value>
void expectSame(const std::optional<Value>& value, ByteView bytes)
{
    if (!value) {
        return;
    }
    const auto again = encode(*value);
    if (!std::ranges::equal(again, bytes)) {
        std::abort();
    }
}

void decodeAll(std::uint8_t flags, ByteView payload)
{
    expectSame(decodeReadRegister(payload), payload);
    expectSame(decodeWriteRegister(payload), payload);
    expectSame(decodeMemoryBlock(payload), payload);
    (void)decodeReadMemory(payload); // has reserved bytes, as have the others below
    (void)decodeForceIp(payload);
    (void)decodePendingAck(payload);
    (void)decodePacketResend(flags, payload);
    (void)decodeDiscoveryAck(payload);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ByteView datagram(data, size);
    if (const auto command = decodeCommand(datagram)) {
        decodeAll(command->header.flags, command->payload);
    }
    if (const auto ack = decodeAck(datagram)) {
        (void)statusText(ack->header.status);
        decodeAll(0, ack->payload);
        decodeAll(kGvcpExtendedIds, ack->payload);
    }
    return 0;
}
