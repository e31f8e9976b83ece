#include "KernelPosix.h"

#include <atomic>
#include <cstddef>
#include <cstring>
#include <mutex>
#include <shared_mutex>
#include <string_view>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{

constexpr std::string_view kViewerSocket = "TelvoDll.debug"; // abstract: no file, no permissions
constexpr suseconds_t kSlowViewerLimit = 100'000;            // microseconds

constexpr int kNone = -1;

/// One unconnected socket per process, opened with the first line. A plain number: a line may come
/// from an exit handler that runs after the destructors of statics.
std::atomic<int> viewerSocket{kNone};

int openSocket()
{
    const int opened = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const timeval limit{.tv_sec = 0, .tv_usec = kSlowViewerLimit};
    setsockopt(opened, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
    return opened;
}

/// The socket of all threads; kNone when the system gives none now.
int socketToViewer()
{
    int present = viewerSocket;
    if (present != kNone) {
        return present;
    }
    const int opened = openSocket();
    if (opened != kNone && !viewerSocket.compare_exchange_strong(present, opened)) {
        close(opened); // another thread was first
        return present;
    }
    return opened;
}

/// Held while a line is sent, so that the end of the process does not close the socket of a thread
/// that still works. Without a destructor, as the socket.
std::shared_mutex socketUse;

/// At unload, and after all exit handlers at the end of the process.
[[gnu::destructor]] void closeSocket()
{
    const std::lock_guard lock(socketUse);
    if (const int open = viewerSocket.exchange(kNone); open != kNone) {
        close(open);
    }
}

sockaddr_un viewerAddress()
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path + 1, kViewerSocket.data(), kViewerSocket.size());
    return address;
}

} // namespace

void OutputDebugStringA(LPCSTR text)
{
    static const sockaddr_un kViewer = viewerAddress();
    constexpr auto kLength =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + kViewerSocket.size());
    const std::string_view line(text);
    const std::shared_lock lock(socketUse);
    sendto(socketToViewer(), line.data(), line.size(), MSG_NOSIGNAL,
           reinterpret_cast<const sockaddr*>(&kViewer), // the socket interface's own idiom
           kLength);
}
