/// Runs rounds of a host's work for so many seconds and prints what the process has of the system,
/// each minute and at the end. Fails when that grows after the first rounds, on a wrong picture,
/// and when a call fails or does not return.
///   usage: soak SECONDS
#include "ProcessUsage.h"
#include "Round.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

namespace
{

using Clock = std::chrono::steady_clock;

/// What is there once for all has been made after so many rounds.
constexpr int kWarmUpRounds = 1;
constexpr std::size_t kMemoryGrowth = 8192; // KiB: fragments and threads' pools
constexpr std::size_t kHeapGrowth = 256;    // KiB
constexpr std::chrono::minutes kReportTime{1};

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
/// A sanitizer keeps memory that was freed for a while; that of addresses finds leaks by itself.
constexpr bool kTellsMemory = false;
#else
constexpr bool kTellsMemory = true;
#endif

class Soak
{
  public:
    void run(std::chrono::seconds time)
    {
        const auto start = Clock::now();
        auto nextReport = start + kReportTime;
        const auto end = start + time;
        while (Clock::now() < end || mRounds <= kWarmUpRounds) {
            runRound(mCalls, mCounts);
            ++mRounds;
            check();
            if (Clock::now() >= std::min(nextReport, end)) {
                report(Clock::now() - start);
                nextReport += kReportTime;
            }
        }
    }

  private:
    /// Between two rounds, when no camera is connected.
    void check()
    {
        mUsage = ProcessUsage::now();
        if (mRounds == kWarmUpRounds) {
            mFirst = mUsage;
        }
        if (mFirst && hasGrown()) {
            throw SoakFailure("grown from " + mFirst->text() + " to " + mUsage.text());
        }
    }

    bool hasGrown() const
    {
        const bool moreMemory = mUsage.memory > mFirst->memory + kMemoryGrowth ||
                                mUsage.heap > mFirst->heap + kHeapGrowth;
        return (kTellsMemory && moreMemory) || mUsage.descriptors > mFirst->descriptors ||
               mUsage.threads > mFirst->threads;
    }

    void report(Clock::duration time) const
    {
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time).count();
        std::printf("%02lld:%02lld %s; %d rounds: %llu live pictures, %llu recorded frames, %llu "
                    "link losses, %llu packets sent again\n",
                    static_cast<long long>(seconds / 60), static_cast<long long>(seconds % 60),
                    mUsage.text().c_str(), mRounds,
                    static_cast<unsigned long long>(mCounts.liveImages),
                    static_cast<unsigned long long>(mCounts.recordedFrames),
                    static_cast<unsigned long long>(mCounts.linkLosses),
                    static_cast<unsigned long long>(mCounts.resentPackets));
        std::fflush(stdout);
    }

    CallWatch mCalls;
    SoakCounts mCounts;
    int mRounds = 0;
    ProcessUsage mUsage;
    std::optional<ProcessUsage> mFirst; // after the warm-up
};

} // namespace

int main(int argc, char** argv)
{
    const std::string_view text = argc == 2 ? argv[1] : "";
    int seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    if (error != std::errc{} || end != text.data() + text.size() || seconds <= 0) {
        std::fputs("usage: soak SECONDS\n", stderr);
        return 2;
    }
    const auto start = Clock::now();
    try {
        Soak().run(std::chrono::seconds(seconds));
    } catch (const SoakFailure& failure) {
        const auto time = Clock::now() - start;
        std::printf("FAILED after %lld s: %s\n",
                    static_cast<long long>(std::chrono::ceil<std::chrono::seconds>(time).count()),
                    failure.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
