#include "PacketSizeNegotiation.h"

#include <algorithm>

namespace gige::control
{

namespace
{

constexpr std::uint32_t kIpUdpHeaders = 28; // bytes: 20 IPv4 + 8 UDP
constexpr int kTriesPerSize = 3;
constexpr std::chrono::milliseconds kTestPacketTimeout{50};

/// What asking for one size brought.
enum class Probe { Arrived, Lost, Failed };

class SizeSearch
{
  public:
    SizeSearch(StreamChannel& channel, const PacketSizeLimits& limits, const TestPacketWait& wait)
        : mChannel(channel), mWait(wait), mStep(std::max(limits.increment, 1U))
    {
        const std::uint32_t mtu = limits.loopback
                                      ? std::min(limits.interfaceMtu, kLoopbackPacketSizeCap)
                                      : limits.interfaceMtu;
        mBase = limits.minimum;
        if (mBase < kSmallestPacketSize) {
            mBase += (kSmallestPacketSize - mBase + mStep - 1) / mStep * mStep;
        }
        mUpper = std::min({mtu, limits.maximum, kLargestPacketSize});
    }

    /// @return the largest size that arrived; 0: none
    std::uint32_t run()
    {
        if (mUpper < mBase || probe(mBase) != Probe::Arrived) {
            return 0;
        }
        const std::uint32_t steps = (mUpper - mBase) / mStep;
        if (steps == 0 || probe(sizeAt(steps)) == Probe::Arrived) {
            return sizeAt(steps);
        }
        return bisect(steps);
    }

  private:
    [[nodiscard]] std::uint32_t sizeAt(std::uint32_t steps) const { return mBase + steps * mStep; }

    /// The largest size below `lost` steps that arrives; 0 steps are known to.
    std::uint32_t bisect(std::uint32_t lost)
    {
        std::uint32_t arrived = 0;
        while (lost - arrived > 1) {
            const std::uint32_t middle = arrived + (lost - arrived) / 2;
            switch (probe(sizeAt(middle))) {
            case Probe::Arrived:
                arrived = middle;
                break;
            case Probe::Lost:
                lost = middle;
                break;
            case Probe::Failed:
                return sizeAt(arrived);
            }
        }
        return sizeAt(arrived);
    }

    Probe probe(std::uint32_t size)
    {
        for (int i = 0; i < kTriesPerSize; ++i) {
            if (const Status fired = mChannel.fireTestPacket(size); fired != Status::Ok) {
                // A device may refuse a size that it cannot send. That is an answer.
                return isDeviceError(fired) ? Probe::Lost : Probe::Failed;
            }
            if (mWait(size - kIpUdpHeaders, kTestPacketTimeout)) {
                return Probe::Arrived;
            }
        }
        return Probe::Lost;
    }

    StreamChannel& mChannel;
    const TestPacketWait& mWait;
    std::uint32_t mStep;
    std::uint32_t mBase = 0;
    std::uint32_t mUpper = 0;
};

} // namespace

Result<std::uint32_t> negotiatePacketSize(StreamChannel& channel, const PacketSizeLimits& limits,
                                          std::uint32_t defaultSize, const TestPacketWait& wait)
{
    const auto before = channel.packetSizeRegister();
    if (!before) {
        return before;
    }
    const std::uint32_t found = SizeSearch(channel, limits, wait).run();
    Status set = Status::Ok;
    if (found != 0) {
        set = channel.setPacketSize(found);
    } else if ((*before & wire::kPacketSizeMask) != 0) {
        set = channel.setPacketSizeRegister(*before & ~wire::kFireTestPacket);
    } else {
        set = channel.setPacketSize(defaultSize);
    }
    return set == Status::Ok ? channel.packetSize() : set;
}

} // namespace gige::control
