#include "DebugListener.h"

#include "ToolError.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <poll.h>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>

namespace telvo
{

namespace
{

// The abstract Unix socket (leading NUL) that debug lines are sent to, one datagram each.
constexpr std::string_view kViewerSocket = "TelvoDll.debug";
constexpr std::size_t kLongestLine = 64 * 1024; // bytes; a longer datagram is cut

} // namespace

struct DebugListener::System {
    int socket = -1;
    std::array<char, kLongestLine> buffer{};

    System() = default;
    ~System() { close(socket); }
    System(const System&) = delete;
    System& operator=(const System&) = delete;

    void open();
    std::optional<DebugLine> receive();
};

void DebugListener::System::open()
{
    socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    const int on = 1; // each datagram then names the process that sent it
    setsockopt(socket, SOL_SOCKET, SO_PASSCRED, &on, sizeof on);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path + 1, kViewerSocket.data(), kViewerSocket.size());
    const auto size =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + kViewerSocket.size());
    // The socket interface's own idiom.
    if (bind(socket, reinterpret_cast<const sockaddr*>(&address), size) != 0) {
        throw Failure(errno == EADDRINUSE
                          ? std::string("another viewer shows the debug lines already")
                          : "cannot listen for debug lines: " +
                                std::generic_category().message(errno));
    }
}

std::optional<DebugLine> DebugListener::System::receive()
{
    iovec data{.iov_base = buffer.data(), .iov_len = buffer.size()};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(ucred))> control{};
    msghdr message{};
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    const ssize_t size = recvmsg(socket, &message, 0);
    if (size < 0) {
        return std::nullopt;
    }
    ucred sender{};
    if (const cmsghdr* header = CMSG_FIRSTHDR(&message);
        header != nullptr && header->cmsg_type == SCM_CREDENTIALS) {
        std::memcpy(&sender, CMSG_DATA(header), sizeof sender);
    }
    return DebugLine{.processId = static_cast<std::uint32_t>(sender.pid),
                     .text = std::string(buffer.data(), static_cast<std::size_t>(size))};
}

DebugListener::DebugListener() : mSystem(std::make_unique<System>())
{
    mSystem->open();
}

DebugListener::~DebugListener() = default;

std::optional<DebugLine> DebugListener::next(std::chrono::milliseconds wait)
{
    pollfd ready{.fd = mSystem->socket, .events = POLLIN, .revents = 0};
    if (poll(&ready, 1, static_cast<int>(wait.count())) <= 0) {
        return std::nullopt;
    }
    return mSystem->receive();
}

} // namespace telvo
