#ifndef TELVO_TOOLS_TELVO_PANEL_LOSTMODE_H
#define TELVO_TOOLS_TELVO_PANEL_LOSTMODE_H

#include "DeskMode.h"

#include <functional>
#include <memory>
#include <string>

namespace telvo
{

/// The link was lost: tries to connect again, every second.
class LostMode : public DeskMode
{
  public:
    /// Connects. @return the mode that the camera is in then. Throws Failure.
    using Connect = std::function<std::unique_ptr<DeskMode>()>;

    explicit LostMode(Connect connect) : mConnect(std::move(connect)) {}

    Step step() override;
    Json state() const override;

  private:
    const Connect mConnect;
    std::string mReason; // why the last try failed; empty: none was made yet
};

} // namespace telvo

#endif
