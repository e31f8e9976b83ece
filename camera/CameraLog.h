#ifndef TELVO_CAMERA_CAMERALOG_H
#define TELVO_CAMERA_CAMERALOG_H

#include "FeatureTable.h"
#include "GvcpStatus.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <vector>

namespace camera
{

/// One register write of a host to a feature, as it arrived.
struct FeatureWrite {
    FeatureId feature{};
    std::uint32_t value = 0;
    gige::wire::GvcpStatus status = gige::wire::GvcpStatus::Success;
    bool operator==(const FeatureWrite&) const = default;
};

/// What the camera has done so far; counted from its start.
struct CameraCounters {
    std::uint64_t commands = 0;       ///< control commands executed
    std::uint64_t repeats = 0;        ///< commands seen again and answered from memory
    std::uint64_t blocks = 0;         ///< images and info frames sent
    std::uint64_t leftOut = 0;        ///< live images for which the stream was too slow
    std::uint64_t packets = 0;        ///< stream packets sent, resent ones included
    std::uint64_t bytes = 0;          ///< image bytes sent
    std::uint64_t resendRequests = 0; ///< PACKETRESEND commands
    std::uint64_t resentPackets = 0;
    std::uint64_t testPackets = 0;
};

/// Observations for tests and for the command line. Thread-safe.
class CameraLog
{
  public:
    void addWrite(const FeatureWrite& write)
    {
        const std::scoped_lock lock(mLock);
        if (mWrites.size() >= kMostWrites) {
            mWrites.erase(mWrites.begin(), mWrites.begin() + kMostWrites / 2);
        }
        mWrites.push_back(write);
    }
    /// All writes in order of arrival, at most kMostWrites: then the older half is dropped.
    [[nodiscard]] std::vector<FeatureWrite> writes() const
    {
        const std::scoped_lock lock(mLock);
        return mWrites;
    }
    /// The values written to one feature, accepted or not, in order.
    [[nodiscard]] std::vector<std::uint32_t> valuesWritten(FeatureId feature) const
    {
        std::vector<std::uint32_t> values;
        for (const FeatureWrite& write : writes()) {
            if (write.feature == feature) {
                values.push_back(write.value);
            }
        }
        return values;
    }
    [[nodiscard]] CameraCounters counters() const
    {
        return {.commands = commands,
                .repeats = repeats,
                .blocks = blocks,
                .leftOut = leftOut,
                .packets = packets,
                .bytes = bytes,
                .resendRequests = resendRequests,
                .resentPackets = resentPackets,
                .testPackets = testPackets};
    }

    std::atomic<std::uint64_t> commands{0};
    std::atomic<std::uint64_t> repeats{0};
    std::atomic<std::uint64_t> blocks{0};
    std::atomic<std::uint64_t> leftOut{0};
    std::atomic<std::uint64_t> packets{0};
    std::atomic<std::uint64_t> bytes{0};
    std::atomic<std::uint64_t> resendRequests{0};
    std::atomic<std::uint64_t> resentPackets{0};
    std::atomic<std::uint64_t> testPackets{0};

  private:
    static constexpr std::size_t kMostWrites = 100'000;

    mutable std::mutex mLock; // guards mWrites
    std::vector<FeatureWrite> mWrites;
};

} // namespace camera

#endif
