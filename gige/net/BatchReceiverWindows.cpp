#include "WinsockRuntime.h"

#include "BatchReceiver.h"

namespace gige::net
{

namespace
{

constexpr std::size_t kSlots = 32;
constexpr std::size_t kSlotSize = 65536; // bytes; longer than any datagram

} // namespace

struct BatchReceiver::Buffers {
    std::vector<std::uint8_t> memory = std::vector<std::uint8_t>(kSlots * kSlotSize);
};

BatchReceiver::BatchReceiver(UdpSocket& socket)
    : mSocket(socket), mRuns(kSlots), mBuffers(std::make_unique<Buffers>())
{
}

BatchReceiver::~BatchReceiver() = default;

ReceiveStatus BatchReceiver::take()
{
    while (mRunCount < kSlots) {
        std::uint8_t* const slot = &mBuffers->memory[mRunCount * kSlotSize];
        sockaddr_in source{};
        int size = sizeof source;
        const int got =
            recvfrom(mSocket.handle(), reinterpret_cast<char*>(slot), static_cast<int>(kSlotSize),
                     0, reinterpret_cast<sockaddr*>(&source), &size);
        if (got >= 0) {
            const auto length = static_cast<std::size_t>(got);
            mRuns[mRunCount++] = {
                .bytes = {slot, length}, .segmentSize = length, .source = fromNative(source)};
            continue;
        }
        const int error = WSAGetLastError();
        if (error == WSAECONNRESET) {
            continue;
        }
        if (error != WSAEWOULDBLOCK && mRunCount == 0) {
            return ReceiveStatus::Failed;
        }
        break;
    }
    return mRunCount == 0 ? ReceiveStatus::TimedOut : ReceiveStatus::Data;
}

} // namespace gige::net
