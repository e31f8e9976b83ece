#include "TransferProgress.h"

#include "Terminal.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <utility>

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

TransferProgress::TransferProgress(std::uint64_t total, std::uint64_t frameSize, ShowText beside)
    : mBeside(std::move(beside)), mTotal(total), mFrameSize(frameSize)
{
    if (!mBeside) {
        mBar.emplace(std::cerr, isTerminal(stderr), "download", total);
    }
}

void TransferProgress::show(std::uint64_t done)
{
    const std::string note = speedNote(done, mTotal, mFrameSize, Clock::now() - mStart);
    if (mBar) {
        mBar->show(done, note);
    } else {
        mBeside(std::to_string(done) + '/' + std::to_string(mTotal) + note);
    }
}

} // namespace telvo
