/// A debug line on its way from the viewer that has the lines to another.
#ifndef TELVO_TOOLS_TELVO_RELAYMESSAGE_H
#define TELVO_TOOLS_TELVO_RELAYMESSAGE_H

#include "DebugListener.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace telvo
{

/// In front of the text: the sender's process id (@0 u32) and whose line it is (@4 u8).
inline constexpr std::size_t kRelayHeader = 5;

std::string relayMessage(const DebugLine& line);
/// None: too short to be one.
std::optional<DebugLine> relayedLine(std::string_view message);

} // namespace telvo

#endif
