#include "DebugLog.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

DebugLog::DebugLog() : mSocket(socket(AF_UNIX, SOCK_DGRAM, 0)), mEnd(eventfd(0, 0))
{
    constexpr char kName[] = "\0TelvoDll.debug";
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, kName, sizeof kName - 1);
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + sizeof kName - 1);
    EXPECT_EQ(bind(mSocket, reinterpret_cast<const sockaddr*>(&address), length), 0);
    mReader = std::thread(&DebugLog::read, this);
}

DebugLog::~DebugLog()
{
    EXPECT_EQ(eventfd_write(mEnd, 1), 0);
    mReader.join();
    close(mEnd);
    close(mSocket);
}

std::vector<std::string> DebugLog::take()
{
    const std::lock_guard lock(mLock);
    keepLines();
    return std::exchange(mLines, {});
}

void DebugLog::read()
{
    std::array<pollfd, 2> watched{{{mSocket, POLLIN, 0}, {mEnd, POLLIN, 0}}};
    while (watched[1].revents == 0) {
        poll(watched.data(), watched.size(), -1);
        const std::lock_guard lock(mLock);
        keepLines();
    }
}

void DebugLog::keepLines()
{
    std::array<char, 2000> line{};
    for (;;) {
        const ssize_t size = recv(mSocket, line.data(), line.size(), MSG_DONTWAIT);
        if (size < 0) {
            return;
        }
        const std::string text(line.data(), static_cast<std::size_t>(size));
        EXPECT_TRUE(text.ends_with("\r\n")) << text;
        mLines.push_back(text.substr(0, text.find_last_not_of("\r\n") + 1));
    }
}

bool contains(const std::vector<std::string>& lines, const std::string& line)
{
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}
