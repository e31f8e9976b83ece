#ifndef TELVO_GIGE_NET_STARTTHREAD_H
#define TELVO_GIGE_NET_STARTTHREAD_H

#include <system_error>
#include <utility>

namespace gige::net
{

/// Starts a thread, if the system has one left.
/// @param thread  std::thread or std::jthread, without a thread yet
/// @return false: there is none to be had, and `body` was not called
template <typename Thread, typename Body>
[[nodiscard]] bool startThread(Thread& thread, Body&& body)
{
    try {
        thread = Thread(std::forward<Body>(body));
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

} // namespace gige::net

#endif
