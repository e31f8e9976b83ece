#include "ViewerSocket.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

ViewerSocket::ViewerSocket(std::string_view name)
    : mSocket(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0))
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::ranges::copy(name, address.sun_path + 1); // behind a NUL: abstract
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
    EXPECT_EQ(bind(mSocket, reinterpret_cast<const sockaddr*>(&address), length), 0);
}

ViewerSocket::~ViewerSocket()
{
    close(mSocket);
}

std::optional<std::string> ViewerSocket::receive() const
{
    std::array<char, 2000> line{};
    const ssize_t size = recv(mSocket, line.data(), line.size(), MSG_DONTWAIT);
    return size < 0 ? std::nullopt
                    : std::optional<std::string>({line.data(), static_cast<std::size_t>(size)});
}
