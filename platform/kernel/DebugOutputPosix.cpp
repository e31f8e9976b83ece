#include "KernelPosix.h"

#include <cstddef>
#include <cstring>
#include <string_view>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{

constexpr std::string_view kViewerSocket = "TelvoDll.debug"; // abstract: no file, no permissions
constexpr suseconds_t kSlowViewerLimit = 100'000;            // microseconds

/// One unconnected socket per process, opened with the first line and closed at unload.
class DebugSocket
{
  public:
    DebugSocket() : mSocket(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0))
    {
        const timeval limit{.tv_sec = 0, .tv_usec = kSlowViewerLimit};
        setsockopt(mSocket, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
        mViewer.sun_family = AF_UNIX;
        std::memcpy(mViewer.sun_path + 1, kViewerSocket.data(), kViewerSocket.size());
    }
    ~DebugSocket() { close(mSocket); }
    DebugSocket(const DebugSocket&) = delete;
    DebugSocket& operator=(const DebugSocket&) = delete;

    void send(std::string_view line) const
    {
        sendto(mSocket, line.data(), line.size(), MSG_NOSIGNAL,
               reinterpret_cast<const sockaddr*>(&mViewer), // the socket interface's own idiom
               static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + kViewerSocket.size()));
    }

  private:
    int mSocket;
    sockaddr_un mViewer{};
};

} // namespace

void OutputDebugStringA(LPCSTR text)
{
    static const DebugSocket socket;
    socket.send(text);
}
