/// Modes in which nothing goes on by itself.
#ifndef TELVO_TOOLS_TELVO_PANEL_PLAINMODES_H
#define TELVO_TOOLS_TELVO_PANEL_PLAINMODES_H

#include "DeskMode.h"

#include <string>
#include <utility>

namespace telvo
{

/// Not connected.
class ClosedMode : public DeskMode
{
  public:
    explicit ClosedMode(std::string text = "not connected") : mText(std::move(text)) {}

    Step step() override { return {.wait = std::chrono::hours(1)}; }
    Json state() const override { return {{"state", "closed"}, {"text", mText}}; }

  private:
    std::string mText;
};

/// Being connected, which is one call.
class ConnectingMode : public DeskMode
{
  public:
    Step step() override { return {.wait = std::chrono::hours(1)}; }
    Json state() const override
    {
        return {{"state", "connecting"}, {"text", "connecting to the camera"}};
    }
};

} // namespace telvo

#endif
