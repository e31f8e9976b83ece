#include "DebugChannel.h"

#include "LogChannel.h"
#include "RelayMessage.h"
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

// Abstract Unix sockets (leading NUL). The library sends its lines to the first one, a datagram
// each.
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

    /// From now on each datagram names the process that sent it.
    void askForSenders() const
    {
        const int on = 1;
        setsockopt(mSocket, SOL_SOCKET, SO_PASSCRED, &on, sizeof on);
    }

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

  private:
    int mSocket;
};

/// @param other  may be null
void waitForLine(const Socket& one, const Socket* other, std::chrono::milliseconds wait)
{
    std::array<pollfd, 2> ready{
        {{.fd = one.get(), .events = POLLIN, .revents = 0},
         {.fd = other == nullptr ? -1 : other->get(), .events = POLLIN, .revents = 0}}};
    (void)poll(ready.data(), ready.size(), static_cast<int>(wait.count()));
}

} // namespace

struct DebugSource::System {
    Socket library;
    Socket stack;
    Socket relay;
    std::array<char, kLongestLine> buffer{};

    std::optional<DebugLine> receive(const Socket& lines, LineSource source);
    void passOn(const DebugLine& line) const;
};

std::optional<DebugLine> DebugSource::System::receive(const Socket& lines, LineSource source)
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
                     .text = std::string(buffer.data(), static_cast<std::size_t>(size)),
                     .source = source};
}

/// A viewer that does not read misses lines; nobody waits.
void DebugSource::System::passOn(const DebugLine& line) const
{
    const std::string message = relayMessage(line);
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
    system->library.askForSenders();
    system->stack.askForSenders();
    if (!system->library.bind(Address(kViewerSocket))) {
        return nullptr;
    }
    (void)system->stack.bind(Address(std::string(gige::log::kViewerName)));
    (void)system->relay.bind(Address(kRelaySocket));
    return std::unique_ptr<DebugSource>(new DebugSource(std::move(system)));
}

/// Of two that wait the stack's comes first: it tells the reason of what the library tells.
std::optional<DebugLine> DebugSource::next(std::chrono::milliseconds wait)
{
    System& system = *mSystem;
    waitForLine(system.stack, &system.library, wait);
    auto line = system.receive(system.stack, LineSource::Stack);
    if (!line) {
        line = system.receive(system.library, LineSource::Library);
    }
    if (line) {
        system.passOn(*line);
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
    return size < 0 ? std::nullopt : relayedLine({buffer.data(), static_cast<std::size_t>(size)});
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
    waitForLine(mSystem->lines, nullptr, wait);
    return mSystem->receive();
}

} // namespace telvo
