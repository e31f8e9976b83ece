#include "LogChannel.h"

#include <algorithm>
#include <cstddef>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace gige::log
{

/// A socket for each line: they are few, and so there is none to be closed at the end of the
/// process or to be shared with its children.
void send(std::string_view line) noexcept
{
    const int opened = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (opened < 0) {
        return;
    }
    sockaddr_un viewer{};
    viewer.sun_family = AF_UNIX;
    std::ranges::copy(kViewerName, viewer.sun_path + 1); // behind a NUL: abstract
    constexpr std::size_t kSize = offsetof(sockaddr_un, sun_path) + 1 + kViewerName.size();
    (void)sendto(opened, line.data(), line.size(), MSG_NOSIGNAL | MSG_DONTWAIT,
                 reinterpret_cast<const sockaddr*>(&viewer), // the socket interface's own idiom
                 static_cast<socklen_t>(kSize));
    close(opened);
}

} // namespace gige::log
