#include "Pacer.h"

#include <algorithm>

namespace camera
{

void Pacer::set(std::uint32_t delay, std::uint64_t bytesPerSecond)
{
    mDelay = std::chrono::nanoseconds(delay);
    mBytesPerSecond = bytesPerSecond;
}

Pacer::Clock::time_point Pacer::book(Clock::time_point now, std::size_t packets, std::size_t bytes)
{
    const Clock::time_point start = std::max(mNext, now - kMostCredit);
    mNext = start + duration(packets, bytes);
    return start;
}

std::size_t Pacer::batchPackets(std::size_t packetBytes) const
{
    const auto one = std::max(duration(1, packetBytes), std::chrono::nanoseconds(1));
    return std::clamp<std::size_t>(static_cast<std::size_t>(kBatchTime / one), 1, kMostPackets);
}

std::chrono::nanoseconds Pacer::duration(std::size_t packets, std::size_t bytes) const
{
    constexpr std::uint64_t kSecond = 1'000'000'000;
    const std::chrono::nanoseconds spaced = mDelay * packets;
    const std::chrono::nanoseconds limited(
        mBytesPerSecond == 0 ? 0 : std::uint64_t{bytes} * kSecond / mBytesPerSecond);
    return std::max(spaced, limited);
}

} // namespace camera
