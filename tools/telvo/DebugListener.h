/// Receives the debug lines of every process on this machine; one source per system.
#ifndef TELVO_TOOLS_TELVO_DEBUGLISTENER_H
#define TELVO_TOOLS_TELVO_DEBUGLISTENER_H

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace telvo
{

struct DebugLine {
    std::uint32_t processId;
    std::string text; // the bytes as sent, Windows-1252, with their line end
};

/// The one viewer of the machine's debug lines: from construction on, lines come here.
class DebugListener
{
  public:
    /// Throws Failure if another viewer has the lines already.
    DebugListener();
    ~DebugListener();
    DebugListener(const DebugListener&) = delete;
    DebugListener& operator=(const DebugListener&) = delete;

    /// The next line; none if none comes within the wait.
    std::optional<DebugLine> next(std::chrono::milliseconds wait);

  private:
    struct System;
    std::unique_ptr<System> mSystem;
};

} // namespace telvo

#endif
