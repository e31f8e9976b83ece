#include "TransferProgress.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace telvo
{

std::string speedNote(std::uint64_t done, std::uint64_t total, std::uint64_t frameSize,
                      std::chrono::duration<double> elapsed)
{
    if (done == 0 || elapsed.count() <= 0) {
        return "";
    }
    const double framesPerSecond = static_cast<double>(done) / elapsed.count();
    const double speed = framesPerSecond * static_cast<double>(frameSize) * 1e-6;
    const auto left =
        static_cast<unsigned long>(std::ceil(static_cast<double>(total - done) / framesPerSecond));
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "  %.1f MB/s, %lu:%02lu left", speed, left / 60,
                  left % 60);
    return text.data();
}

TransferProgress::TransferProgress(std::uint64_t total, std::uint64_t frameSize)
    : mBar(terminalProgress("download", total)), mTotal(total), mFrameSize(frameSize)
{
}

void TransferProgress::show(std::uint64_t done)
{
    mBar.show(done, speedNote(done, mTotal, mFrameSize, Clock::now() - mStart));
}

} // namespace telvo
