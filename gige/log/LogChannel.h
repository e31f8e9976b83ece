/// The way of the stack's lines to whoever shows them, apart from the way of a library above.
#ifndef TELVO_GIGE_LOG_LOGCHANNEL_H
#define TELVO_GIGE_LOG_LOGCHANNEL_H

#include <cstddef>
#include <string_view>

namespace gige::log
{

/// Where a viewer gets the lines, a message each: on Linux the abstract Unix datagram socket of
/// this name, which tells the sender by its credentials; on Windows the mailslot of this name, with
/// the sender's process id (u32) in front of each text, and the event of this name, which is set
/// behind each.
inline constexpr std::string_view kViewerName = "TelvoGigE.log";
inline constexpr std::size_t kLongestMessage = 1024; // bytes

/// Hands a line over. Without a viewer, or with one that does not keep up, nothing happens. Waits
/// for nobody, keeps nothing open, needs no memory. Threads: any, also in exit handlers.
void send(std::string_view line) noexcept;

} // namespace gige::log

#endif
