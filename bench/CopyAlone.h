#ifndef TELVO_BENCH_COPYALONE_H
#define TELVO_BENCH_COPYALONE_H

#include <chrono>
#include <cstddef>
#include <cstdint>

/// What receiving cannot do without: another process writes pictures into memory that both share,
/// as much of it as a packet ring has, and this one copies each to where its host wants it. To be
/// called while the program has one thread.
/// @param bytesPerSecond  the pace at which they are written
/// @return CPU seconds of this process per byte
/// @throws std::runtime_error
double copyAlone(std::size_t pictureSize, std::size_t packetSize, std::uint64_t bytesPerSecond,
                 std::chrono::seconds time);

#endif
