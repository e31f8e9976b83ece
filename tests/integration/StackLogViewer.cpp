#include "StackLogViewer.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace std::chrono_literals;

StackLogViewer::StackLogViewer() : mSocket(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0))
{
    constexpr char kName[] = "\0TelvoGigE.log";
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, kName, sizeof kName - 1);
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + sizeof kName - 1);
    EXPECT_EQ(bind(mSocket, reinterpret_cast<const sockaddr*>(&address), length), 0);
}

StackLogViewer::~StackLogViewer()
{
    close(mSocket);
}

std::string StackLogViewer::await(const std::string& part) const
{
    constexpr auto kLong = 20s; // a busy machine
    for (const auto end = std::chrono::steady_clock::now() + kLong;
         std::chrono::steady_clock::now() < end;) {
        std::string line = next(100ms);
        if (line.find(part) != std::string::npos) {
            return line;
        }
    }
    return "";
}

bool StackLogViewer::hasSeen(const std::string& part) const
{
    bool seen = false;
    for (std::string line = next(0ms); !line.empty(); line = next(0ms)) {
        seen = seen || line.find(part) != std::string::npos;
    }
    return seen;
}

std::string StackLogViewer::next(std::chrono::milliseconds wait) const
{
    pollfd ready{.fd = mSocket, .events = POLLIN, .revents = 0};
    std::array<char, 2000> line{};
    if (poll(&ready, 1, static_cast<int>(wait.count())) <= 0) {
        return "";
    }
    const ssize_t size = recv(mSocket, line.data(), line.size(), MSG_DONTWAIT);
    return size < 0 ? "" : std::string(line.data(), static_cast<std::size_t>(size));
}
