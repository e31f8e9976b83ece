/// Receives the debug lines of every process on this machine: the library's, and those in which the
/// GigE Vision stack tells its reasons.
#ifndef TELVO_TOOLS_TELVO_DEBUGLISTENER_H
#define TELVO_TOOLS_TELVO_DEBUGLISTENER_H

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace telvo
{

enum class LineSource : std::uint8_t { Library, Stack };

struct DebugLine {
    std::uint32_t processId;
    std::string text; // the bytes as sent; the library's are Windows-1252, with their line end
    LineSource source = LineSource::Library;
};

class DebugSource;
class RelayedLines;

/// A viewer of the machine's debug lines: from construction on, they come here. When the viewer
/// that has passed them on ends, one of the others takes its place within a wait; what is sent
/// meanwhile is lost, as it is while there is no viewer.
class DebugListener
{
  public:
    /// Throws Failure if a viewer has the lines already that passes none on, or too many others.
    DebugListener();
    ~DebugListener();
    DebugListener(const DebugListener&) = delete;
    DebugListener& operator=(const DebugListener&) = delete;

    /// The next line; none if none comes within the wait.
    std::optional<DebugLine> next(std::chrono::milliseconds wait);

  private:
    std::unique_ptr<DebugSource> mSource;   // null: another viewer has the lines
    std::unique_ptr<RelayedLines> mRelayed; // null: this one has them
};

} // namespace telvo

#endif
