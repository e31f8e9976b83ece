#include "RelayMessage.h"

#include <cstring>

namespace telvo
{

std::string relayMessage(const DebugLine& line)
{
    std::string message(kRelayHeader, '\0');
    std::memcpy(message.data(), &line.processId, sizeof line.processId);
    message[sizeof line.processId] = static_cast<char>(line.source);
    return message + line.text;
}

std::optional<DebugLine> relayedLine(std::string_view message)
{
    if (message.size() < kRelayHeader) {
        return std::nullopt;
    }
    DebugLine line{.processId = 0, .text = std::string(message.substr(kRelayHeader))};
    std::memcpy(&line.processId, message.data(), sizeof line.processId);
    const bool isOfStack = message[sizeof line.processId] == static_cast<char>(LineSource::Stack);
    line.source = isOfStack ? LineSource::Stack : LineSource::Library;
    return line;
}

} // namespace telvo
