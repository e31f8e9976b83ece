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
#include <string_view>
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

Address relayAddress(std::size_t number)
{
    return Address("TelvoDll.debug.relay." + std::to_string(number));
}

/// Nothing that it does waits.
class Socket
{
  public:
    /// @param type  SOCK_DGRAM, or SOCK_SEQPACKET for a connection
    explicit Socket(int type) : Socket(Opened{::socket(AF_UNIX, type | kFlags, 0)}) {}
    ~Socket() { close(mSocket); }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    /// @return null: nobody listens there
    static std::unique_ptr<Socket> connectedTo(const Address& address)
    {
        auto socket = std::make_unique<Socket>(SOCK_SEQPACKET);
        const bool isConnected = connect(socket->get(), address.get(), address.size) == 0;
        return isConnected ? std::move(socket) : nullptr;
    }

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

    void listen() const { (void)::listen(mSocket, 1); }
    /// @return null: nobody has connected
    std::unique_ptr<Socket> accept() const
    {
        const int accepted = accept4(mSocket, nullptr, nullptr, kFlags);
        return accepted < 0 ? nullptr : std::unique_ptr<Socket>(new Socket(Opened{accepted}));
    }

    /// What finds no room at the other end is lost.
    /// @return false: the other end is closed
    bool send(std::string_view message) const
    {
        return ::send(mSocket, message.data(), message.size(), MSG_NOSIGNAL) >= 0 ||
               errno == EAGAIN;
    }

  private:
    static constexpr int kFlags = SOCK_CLOEXEC | SOCK_NONBLOCK;

    struct Opened {
        int socket;
    };
    explicit Socket(Opened opened) : mSocket(opened.socket) {}

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

/// Another viewer, to which lines are passed on: over a connection, since the system keeps no more
/// than ten datagrams for one that is slow.
class OtherViewer
{
  public:
    /// A viewer that does not read misses lines; nobody waits.
    void send(const Address& address, std::string_view message)
    {
        if (mConnection && mConnection->send(message)) {
            return;
        }
        mConnection = Socket::connectedTo(address); // there is a viewer, or a new one
        if (mConnection) {
            (void)mConnection->send(message);
        }
    }

  private:
    std::unique_ptr<Socket> mConnection;
};

} // namespace

struct DebugSource::System {
    Socket library{SOCK_DGRAM};
    Socket stack{SOCK_DGRAM};
    Socket relay{SOCK_DGRAM};
    std::array<OtherViewer, kMostRelays> others;
    std::array<char, kLongestLine> buffer{};

    std::optional<DebugLine> receive(const Socket& lines, LineSource source);
    void passOn(const DebugLine& line);
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

void DebugSource::System::passOn(const DebugLine& line)
{
    const std::string message = relayMessage(line);
    for (std::size_t i = 0; i < others.size(); ++i) {
        others[i].send(relayAddress(i), message);
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
    Socket listening{SOCK_SEQPACKET};
    std::unique_ptr<Socket> connection; // null: nobody has passed a line on yet
    std::array<char, kLongestLine + kRelayHeader> buffer{};

    std::optional<DebugLine> receive();
};

std::optional<DebugLine> RelayedLines::System::receive()
{
    for (;;) {
        if (!connection) {
            connection = listening.accept();
        }
        const ssize_t size =
            connection ? recv(connection->get(), buffer.data(), buffer.size(), 0) : -1;
        if (size < 0) {
            return std::nullopt;
        }
        if (size > 0) {
            return relayedLine({buffer.data(), static_cast<std::size_t>(size)});
        }
        connection.reset(); // that viewer has ended
    }
}

RelayedLines::RelayedLines(std::unique_ptr<System> system) : mSystem(std::move(system)) {}
RelayedLines::~RelayedLines() = default;

std::unique_ptr<RelayedLines> RelayedLines::open()
{
    const Address relay(kRelaySocket);
    if (connect(Socket(SOCK_DGRAM).get(), relay.get(), relay.size) != 0) {
        return nullptr;
    }
    auto system = std::make_unique<System>();
    for (std::size_t i = 0; i < kMostRelays; ++i) {
        if (system->listening.bind(relayAddress(i))) {
            system->listening.listen();
            return std::unique_ptr<RelayedLines>(new RelayedLines(std::move(system)));
        }
    }
    return nullptr;
}

std::optional<DebugLine> RelayedLines::next(std::chrono::milliseconds wait)
{
    waitForLine(mSystem->connection ? *mSystem->connection : mSystem->listening, nullptr, wait);
    return mSystem->receive();
}

} // namespace telvo
