#include "DebugLog.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

DebugLog::DebugLog() : mEnd(eventfd(0, 0)), mReader(&DebugLog::read, this) {}

DebugLog::~DebugLog()
{
    EXPECT_EQ(eventfd_write(mEnd, 1), 0);
    mReader.join();
    close(mEnd);
}

std::vector<std::string> DebugLog::take()
{
    const std::lock_guard lock(mLock);
    keepLines();
    return std::exchange(mLines, {});
}

void DebugLog::read()
{
    std::array<pollfd, 2> watched{{{mSocket.get(), POLLIN, 0}, {mEnd, POLLIN, 0}}};
    while (watched[1].revents == 0) {
        poll(watched.data(), watched.size(), -1);
        const std::lock_guard lock(mLock);
        keepLines();
    }
}

void DebugLog::keepLines()
{
    while (const auto line = mSocket.receive()) {
        EXPECT_TRUE(line->ends_with("\r\n")) << *line;
        mLines.push_back(line->substr(0, line->find_last_not_of("\r\n") + 1));
    }
}

bool contains(const std::vector<std::string>& lines, const std::string& line)
{
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}
