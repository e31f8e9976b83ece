/// The ways of debug lines; one source per system. The system gives them to one viewer only, which
/// passes them on to the others.
#ifndef TELVO_TOOLS_TELVO_DEBUGCHANNEL_H
#define TELVO_TOOLS_TELVO_DEBUGCHANNEL_H

#include "DebugListener.h"

#include <chrono>
#include <memory>
#include <optional>

namespace telvo
{

constexpr int kMostRelays = 8; // viewers beside the first

/// The machine's debug lines, which one viewer has at a time. It passes each on to the others, so
/// that all show the lines of library and stack in the same order.
class DebugSource
{
  public:
    /// Null: another viewer has them. Throws Failure.
    static std::unique_ptr<DebugSource> open();
    ~DebugSource();
    DebugSource(const DebugSource&) = delete;
    DebugSource& operator=(const DebugSource&) = delete;

    std::optional<DebugLine> next(std::chrono::milliseconds wait);

  private:
    struct System;
    explicit DebugSource(std::unique_ptr<System> system);
    std::unique_ptr<System> mSystem;
};

/// The lines that the viewer which has them passes on.
class RelayedLines
{
  public:
    /// Null: it passes none on, or there are as many viewers as it knows. Throws Failure.
    static std::unique_ptr<RelayedLines> open();
    ~RelayedLines();
    RelayedLines(const RelayedLines&) = delete;
    RelayedLines& operator=(const RelayedLines&) = delete;

    std::optional<DebugLine> next(std::chrono::milliseconds wait);

  private:
    struct System;
    explicit RelayedLines(std::unique_ptr<System> system);
    std::unique_ptr<System> mSystem;
};

} // namespace telvo

#endif
