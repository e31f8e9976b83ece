#ifndef TELVO_GIGE_NET_SOCKETHANDLE_H
#define TELVO_GIGE_NET_SOCKETHANDLE_H

#include <cstdint>
#include <utility>

namespace gige::net
{

#ifdef _WIN32
using NativeSocket = std::uintptr_t; // SOCKET
#else
using NativeSocket = int; // file descriptor
#endif

constexpr NativeSocket kInvalidSocket = static_cast<NativeSocket>(-1);

/// Owns a socket of the system, or a descriptor that is waited for like one.
class SocketHandle
{
  public:
    SocketHandle() = default;
    explicit SocketHandle(NativeSocket socket) : mSocket(socket) {}
    ~SocketHandle() { reset(); }
    SocketHandle(SocketHandle&& other) noexcept : mSocket(other.release()) {}
    SocketHandle& operator=(SocketHandle&& other) noexcept
    {
        reset(other.release());
        return *this;
    }
    SocketHandle(const SocketHandle&) = delete;
    SocketHandle& operator=(const SocketHandle&) = delete;

    explicit operator bool() const { return mSocket != kInvalidSocket; }
    NativeSocket get() const { return mSocket; }
    NativeSocket release() { return std::exchange(mSocket, kInvalidSocket); }
    void reset(NativeSocket socket = kInvalidSocket)
    {
        const NativeSocket old = std::exchange(mSocket, socket);
        if (old != kInvalidSocket) {
            close(old);
        }
    }

  private:
    static void close(NativeSocket socket);

    NativeSocket mSocket = kInvalidSocket;
};

} // namespace gige::net

#endif
