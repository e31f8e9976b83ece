#ifndef TELVO_BENCH_TOOLPANEL_H
#define TELVO_BENCH_TOOLPANEL_H

#include <cstdint>
#include <string>
#include <sys/types.h>

/// The tool's panel as a process of its own, connected to one camera.
class ToolPanel
{
  public:
    /// @throws std::runtime_error if it does not serve
    explicit ToolPanel(const std::string& camera);
    ~ToolPanel();
    ToolPanel(const ToolPanel&) = delete;
    ToolPanel& operator=(const ToolPanel&) = delete;

    std::uint16_t port() const { return mPort; }
    /// CPU seconds that it has used, all threads together.
    double cpuSeconds() const;

  private:
    pid_t mProcess = -1;
    int mOutput = -1; // open as long as it may write
    std::uint16_t mPort = 0;
};

#endif
