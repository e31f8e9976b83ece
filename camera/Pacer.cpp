#include "Pacer.h"

#include "PacketArithmetic.h"

#include <algorithm>

namespace camera
{

std::size_t Pacer::take(Clock::time_point now, std::span<const gige::net::PacketSlices> packets)
{
    if (now - mNext > kMostCredit) {
        mNext = now;
    }
    const std::size_t most = std::min(packets.size(), kMostPackets);
    std::size_t count = 0;
    while (count < most && mNext <= now) {
        mNext += timeOf(packets[count]);
        ++count;
    }
    return count;
}

Pacer::Clock::time_point Pacer::wakeUp(Clock::time_point now) const
{
    constexpr auto kShortestSleep =
        std::chrono::nanoseconds(std::chrono::seconds(1)) / kMostWakeUps;
    return std::max(mNext, now + kShortestSleep);
}

std::chrono::nanoseconds Pacer::timeOf(const gige::net::PacketSlices& packet) const
{
    constexpr std::uint64_t kSecond = 1'000'000'000; // nanoseconds
    const std::size_t bytes = packet.size() + gige::wire::kIpUdpHeaderSize;
    std::chrono::nanoseconds time = mPace.delay;
    if (mPace.bytesPerSecond != 0) {
        time = std::max(time, std::chrono::nanoseconds(bytes * kSecond / mPace.bytesPerSecond));
    }
    if (mPace.linkRate != 0) {
        time = std::max(time, timeOnCable(bytes, mPace.linkRate));
    }
    return time;
}

} // namespace camera
