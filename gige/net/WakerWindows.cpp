#include "WinsockRuntime.h"

#include "Waker.h"

namespace gige::net
{

namespace
{

SocketHandle socketToItself()
{
    startWinsock();
    SocketHandle socket(::socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP));
    sockaddr_in address = toNative({.address = {0x7F000001}, .port = 0});
    int size = sizeof address;
    auto* const name = reinterpret_cast<sockaddr*>(&address);
    if (!socket || bind(socket.get(), name, size) != 0 ||
        getsockname(socket.get(), name, &size) != 0 || connect(socket.get(), name, size) != 0 ||
        !setNonBlocking(socket.get())) {
        socket.reset();
    }
    return socket;
}

} // namespace

Waker::Waker() : mHandle(socketToItself()) {}

void Waker::wake()
{
    const char byte = 0;
    send(mHandle.get(), &byte, 1, 0);
}

void Waker::clear()
{
    char byte = 0;
    while (recv(mHandle.get(), &byte, 1, 0) > 0) {
    }
}

} // namespace gige::net
