#include "StackLogViewer.h"

#include <poll.h>

using namespace std::chrono_literals;

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
    while (const auto line = mSocket.receive()) {
        seen = seen || line->find(part) != std::string::npos;
    }
    return seen;
}

std::string StackLogViewer::next(std::chrono::milliseconds wait) const
{
    pollfd ready{.fd = mSocket.get(), .events = POLLIN, .revents = 0};
    (void)poll(&ready, 1, static_cast<int>(wait.count()));
    return mSocket.receive().value_or("");
}
