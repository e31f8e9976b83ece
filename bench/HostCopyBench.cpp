/// What the host's side of a readout costs per byte: a block of recorded frames copied for the
/// host, plainly and with the check of its frame counters.
#include "FrameCounterCheck.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <vector>

namespace
{

constexpr std::size_t kFrameSize = 1280 * 1024;
constexpr std::size_t kFrames = 4; // a block of the library's
constexpr std::size_t kBlocks = 8; // together they are in no cache

/// Blocks with continuous frame counters, and one to copy to.
struct Recording {
    std::vector<std::uint8_t> bytes = std::vector<std::uint8_t>(kBlocks * kFrames * kFrameSize, 1);
    std::vector<std::uint8_t> copy = std::vector<std::uint8_t>(kFrames * kFrameSize, 1);

    Recording()
    {
        for (std::size_t frame = 0; frame < kBlocks * kFrames; ++frame) {
            bytes[frame * kFrameSize + 4] = static_cast<std::uint8_t>(frame + 1);
            bytes[frame * kFrameSize + 5] = 0;
        }
    }
    std::span<const std::uint8_t> block(std::size_t index) const
    {
        return std::span(bytes).subspan(index * copy.size(), copy.size());
    }
};

/// @param use  called with each block in turn, and with where to copy it
template <typename Use>
void copyBlocks(benchmark::State& state, Use use)
{
    Recording recording;
    std::size_t next = 0;
    for ([[maybe_unused]] auto _ : state) {
        use(recording.block(next), recording.copy, next == 0);
        benchmark::ClobberMemory();
        next = (next + 1) % kBlocks;
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(recording.copy.size()));
}

void plainCopy(benchmark::State& state)
{
    copyBlocks(state, [](auto block, auto& copy, bool /*isFirst*/) {
        std::copy(block.begin(), block.end(), copy.begin());
    });
}
BENCHMARK(plainCopy);

void checkedCopy(benchmark::State& state)
{
    FrameCounterCheck check;
    copyBlocks(state, [&](auto block, auto& copy, bool isFirst) {
        if (isFirst) {
            check = {};
        }
        const auto gaps = check.check(BlockCounters(block, kFrameSize, kFrames));
        if (!gaps.empty()) {
            state.SkipWithError("gaps where there are none");
        }
        std::copy(block.begin(), block.end(), copy.begin());
    });
}
BENCHMARK(checkedCopy);

} // namespace

BENCHMARK_MAIN();
