#include "DebugChannel.h"

#include "ToolError.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace telvo
{

namespace
{

// Abstract Unix sockets (leading NUL). Debug lines are sent to the first one, a datagram each.
constexpr const char* kViewerSocket = "TelvoDll.debug";
constexpr const char* kRelaySocket = "TelvoDll.debug.relay"; // there while lines are passed on
constexpr std::size_t kLongestLine = 64 * 1024;              // bytes; a longer datagram is cut

/// A socket address of this name.
struct Address {
    sockaddr_un value{};
    socklen_t size;

    explicit Address(const std::string& name)
        : size(static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size()))
    {
        value.sun_family = AF_UNIX;
        std::memcpy(value.sun_path + 1, name.data(), name.size());
    }
    // The socket interface's own idiom.
    const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&value); }
};

Address relayAddress(int number)
{
    return Address("TelvoDll.debug.relay." + std::to_string(number));
}

class Socket
{
  public:
    Socket() : mSocket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}
    ~Socket() { close(mSocket); }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    int get() const { return mSocket; }

    /// @return false: the name is taken
    bool bind(const Address& address) const
    {
        if (::bind(mSocket, address.get(), address.size) == 0) {
            return true;
        }
        if (errno != EADDRINUSE) {
            throw Failure("cannot listen for debug lines: " +
                          std::generic_category().message(errno) + "; try again");
        }
        return false;
    }

    bool waitForLine(std::chrono::milliseconds wait) const
    {
        pollfd ready{.fd = mSocket, .events = POLLIN, .revents = 0};
        return poll(&ready, 1, static_cast<int>(wait.count())) > 0;
    }

  private:
    int mSocket;
};

} // namespace

struct DebugSource::System {
    Socket lines;
    Socket relay;
    std::array<char, kLongestLine> buffer{};

    std::optional<DebugLine> receive();
    void passOn(const DebugLine& line) const;
};

std::optional<DebugLine> DebugSource::System::receive()
{
    iovec data{.iov_base = buffer.data(), .iov_len = buffer.size()};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(ucred))> control{};
    msghdr message{};
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    const ssize_t size = recvmsg(lines.get(), &message, 0);
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

/// The sender's number, then the text. A viewer that does not read misses lines; nobody waits.
void DebugSource::System::passOn(const DebugLine& line) const
{
    std::string message(sizeof line.processId, '\0');
    std::memcpy(message.data(), &line.processId, sizeof line.processId);
    message += line.text;
    for (int i = 0; i < kMostRelays; ++i) {
        const Address viewer = relayAddress(i);
        (void)sendto(relay.get(), message.data(), message.size(), MSG_NOSIGNAL, viewer.get(),
                     viewer.size);
    }
}

DebugSource::DebugSource(std::unique_ptr<System> system) : mSystem(std::move(system)) {}
DebugSource::~DebugSource() = default;

std::unique_ptr<DebugSource> DebugSource::open()
{
    auto system = std::make_unique<System>();
    const int on = 1; // each datagram then names the process that sent it
    setsockopt(system->lines.get(), SOL_SOCKET, SO_PASSCRED, &on, sizeof on);
    if (!system->lines.bind(Address(kViewerSocket))) {
        return nullptr;
    }
    (void)system->relay.bind(Address(kRelaySocket));
    return std::unique_ptr<DebugSource>(new DebugSource(std::move(system)));
}

std::optional<DebugLine> DebugSource::next(std::chrono::milliseconds wait)
{
    auto line = mSystem->lines.waitForLine(wait) ? mSystem->receive() : std::nullopt;
    if (line) {
        mSystem->passOn(*line);
    }
    return line;
}

struct RelayedLines::System {
    Socket lines;
    std::array<char, kLongestLine> buffer{};

    std::optional<DebugLine> receive();
};

std::optional<DebugLine> RelayedLines::System::receive()
{
    const ssize_t size = recv(lines.get(), buffer.data(), buffer.size(), 0);
    DebugLine line{};
    if (size < static_cast<ssize_t>(sizeof line.processId)) {
        return std::nullopt;
    }
    std::memcpy(&line.processId, buffer.data(), sizeof line.processId);
    line.text.assign(&buffer[sizeof line.processId], &buffer[static_cast<std::size_t>(size)]);
    return line;
}

RelayedLines::RelayedLines(std::unique_ptr<System> system) : mSystem(std::move(system)) {}
RelayedLines::~RelayedLines() = default;

std::unique_ptr<RelayedLines> RelayedLines::open()
{
    const Address relay(kRelaySocket);
    if (connect(Socket().get(), relay.get(), relay.size) != 0) {
        return nullptr;
    }
    auto system = std::make_unique<System>();
    for (int i = 0; i < kMostRelays; ++i) {
        if (system->lines.bind(relayAddress(i))) {
            return std::unique_ptr<RelayedLines>(new RelayedLines(std::move(system)));
        }
    }
    return nullptr;
}

std::optional<DebugLine> RelayedLines::next(std::chrono::milliseconds wait)
{
    return mSystem->lines.waitForLine(wait) ? mSystem->receive() : std::nullopt;
}

} // namespace telvo
