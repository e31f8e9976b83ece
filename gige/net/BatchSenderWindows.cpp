#include "WinsockRuntime.h"

#include "BatchSender.h"

#include <array>

namespace gige::net
{

namespace
{

WSABUF toNative(std::span<const std::uint8_t> slice)
{
    return {.len = static_cast<ULONG>(slice.size()),
            .buf = const_cast<char*>(reinterpret_cast<const char*>(slice.data()))};
}

bool sendOne(NativeSocket socket, const sockaddr_in& destination, const PacketSlices& packet)
{
    std::array<WSABUF, 2> slices{toNative(packet.header), toNative(packet.payload)};
    for (;;) {
        DWORD sent = 0;
        if (WSASendTo(socket, slices.data(), static_cast<DWORD>(slices.size()), &sent, 0,
                      reinterpret_cast<const sockaddr*>(&destination), sizeof destination, nullptr,
                      nullptr) == 0) {
            return true;
        }
        if (WSAGetLastError() != WSAEWOULDBLOCK) {
            return false;
        }
        fd_set sockets;
        FD_ZERO(&sockets);
        FD_SET(socket, &sockets);
        select(0, nullptr, &sockets, nullptr, nullptr);
    }
}

} // namespace

struct BatchSender::Batch {
};

BatchSender::BatchSender(UdpSocket& socket, SendMode /*mode: always single*/) : mSocket(socket) {}

BatchSender::~BatchSender() = default;

std::size_t BatchSender::send(const Endpoint& destination, std::span<const PacketSlices> packets)
{
    const sockaddr_in address = gige::net::toNative(destination);
    std::size_t sent = 0;
    while (sent < packets.size() && sendOne(mSocket.handle(), address, packets[sent])) {
        ++sent;
    }
    return sent;
}

} // namespace gige::net
