#ifndef TELVO_TOOLS_TELVO_TRANSFERPROGRESS_H
#define TELVO_TOOLS_TELVO_TRANSFERPROGRESS_H

#include "ProgressBar.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace telvo
{

/// "  412.3 MB/s, 0:07 left" behind a bar; nothing before there is a speed.
/// @param done   frames so far
/// @param total  frames in all
std::string speedNote(std::uint64_t done, std::uint64_t total, std::uint64_t frameSize,
                      std::chrono::duration<double> elapsed);

/// Frames, speed and time left on the terminal: a bar, or beside those of other cameras.
class TransferProgress
{
  public:
    using ShowText = std::function<void(const std::string&)>;

    /// @param beside  takes the text; none: there is a bar
    TransferProgress(std::uint64_t total, std::uint64_t frameSize, ShowText beside = {});

    void show(std::uint64_t done);

  private:
    using Clock = std::chrono::steady_clock;

    std::optional<ProgressBar> mBar;
    ShowText mBeside;
    std::uint64_t mTotal;
    std::uint64_t mFrameSize;
    Clock::time_point mStart = Clock::now();
};

} // namespace telvo

#endif
