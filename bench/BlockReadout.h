#ifndef TELVO_BENCH_BLOCKREADOUT_H
#define TELVO_BENCH_BLOCKREADOUT_H

#include <cstdint>

/// The one camera of a benchmark.
inline constexpr std::int32_t kCamera = 1;

/// Connects and initialises with a host's usual settings. @throws std::runtime_error
void connectHost(const char* macAddress, const char* ipAddress, std::uint32_t packetSize);

/// Reads the first frames of the recording in blocks of the size that the library names.
/// @return seconds from the first request to the last byte. @throws std::runtime_error
double readInBlocks(std::uint32_t frames);

#endif
