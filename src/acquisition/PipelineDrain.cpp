#include "PipelineDrain.h"

#include "Kernel.h"

#include <algorithm>

namespace
{

constexpr std::int64_t kMinPasses = 50;
constexpr std::int64_t kPassesPerFrame = 5;
constexpr std::int32_t kMaxMisses = 9;     // in a row; the next but one ends the loop
constexpr std::int32_t kMissesToPause = 5; // in a row, while frames are missing
constexpr DWORD kFirstTimeout = 4;         // ms
constexpr DWORD kTimeoutWhileMissing = 12; // ms
constexpr DWORD kTimeoutWhenAllHere = 2;   // ms

} // namespace

Drained drainPipeline(StoppablePipeline& pipeline, std::int32_t ordered, std::int32_t acquired,
                      const LogText<std::int32_t>& pausing,
                      const std::function<bool()>& isStopRequested)
{
    const std::int64_t limit = std::max(kPassesPerFrame * ordered - acquired, kMinPasses);
    Drained drained{.passes = 0, .buffers = 0};
    std::int32_t misses = 0;
    DWORD timeout = kFirstTimeout;
    while (drained.passes < limit && !isStopRequested()) {
        ++drained.passes;
        PvBuffer* buffer = nullptr;
        PvResult operation;
        if (pipeline.retrieve(&buffer, timeout, &operation).IsOK()) {
            pipeline.release(buffer);
            ++drained.buffers;
            misses = 0;
            timeout =
                ordered > drained.buffers + acquired ? kTimeoutWhileMissing : kTimeoutWhenAllHere;
            continue;
        }
        if (misses > kMaxMisses) {
            break;
        }
        if (timeout == kTimeoutWhileMissing && misses >= kMissesToPause) {
            pausing.log(misses);
            Sleep(static_cast<DWORD>(misses));
        }
        ++misses;
    }
    return drained;
}
