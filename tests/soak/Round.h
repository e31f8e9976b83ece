#ifndef TELVO_TESTS_SOAK_ROUND_H
#define TELVO_TESTS_SOAK_ROUND_H

#include "CallWatch.h"

#include <cstdint>
#include <stdexcept>

/// What was wrong.
class SoakFailure : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// What the host got so far.
struct SoakCounts {
    std::uint64_t liveImages = 0;
    std::uint64_t recordedFrames = 0;
    std::uint64_t linkLosses = 0;
    std::uint64_t resentPackets = 0; // by the camera
};

/// A camera comes, a host takes live pictures, records, reads the recording in blocks, loses the
/// link, finds the camera again, and both go; meanwhile packets get lost, come twice, in disorder
/// and with pauses. Throws SoakFailure.
void runRound(CallWatch& calls, SoakCounts& counts);

#endif
