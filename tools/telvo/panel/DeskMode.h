#ifndef TELVO_TOOLS_TELVO_PANEL_DESKMODE_H
#define TELVO_TOOLS_TELVO_PANEL_DESKMODE_H

#include "Json.h"

#include <chrono>
#include <memory>

namespace telvo
{

/// What is being done with a camera right now. Of the camera's thread.
class DeskMode
{
  public:
    DeskMode() = default;
    virtual ~DeskMode() = default;
    DeskMode(const DeskMode&) = delete;
    DeskMode& operator=(const DeskMode&) = delete;

    struct Step {
        std::chrono::milliseconds wait{}; // until the next one
        std::unique_ptr<DeskMode> next{}; // null: it goes on
    };
    /// Does a little of the work. Throws Failure.
    virtual Step step() = 0;

    /// "state", "text" and whatever is known of it besides.
    virtual Json state() const = 0;

    /// Why the camera cannot be used for something else, and what to do; null: it can.
    virtual const char* busy() const { return nullptr; }

    /// Whether live pictures are taken, which may be interrupted.
    virtual bool isLive() const { return false; }
};

} // namespace telvo

#endif
