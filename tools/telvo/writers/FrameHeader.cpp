#include "FrameHeader.h"

#include <array>
#include <cstdio>

namespace telvo
{

namespace
{

struct FlagName {
    std::uint8_t flag;
    const char* name;
};

constexpr FlagName kFlagNames[] = {
    {kFlagTrigger, "trigger"}, {kFlagSyncIn, "sync-in"}, {kFlagRecording, "recording"},
    {kFlagTrailer, "trailer"}, {kFlagIrigB, "irig-b"},
};

} // namespace

FrameHeader decodeFrameHeader(std::span<const std::uint8_t> frame)
{
    std::uint64_t time = 0;
    for (std::size_t i = 14; i >= 8; --i) {
        time = time << 8 | frame[i];
    }
    return {.time = time,
            .counter = static_cast<std::uint16_t>(frame[4] | frame[5] << 8),
            .flags = frame[7],
            .extra = frame[15]};
}

std::vector<std::string> flagNames(std::uint8_t flags)
{
    std::vector<std::string> names;
    for (const FlagName& flag : kFlagNames) {
        if ((flags & flag.flag) != 0) {
            names.emplace_back(flag.name);
        }
    }
    return names;
}

/// Bits 0 to 19 microsecond, 20 to 25 second, 26 to 31 minute, 32 to 36 hour, 37 to 45 day.
std::string timeOfDay(std::uint64_t time)
{
    const auto field = [time](unsigned first, unsigned bits) {
        return static_cast<unsigned>(time >> first & ((1U << bits) - 1));
    };
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%03u %02u:%02u:%02u.%06u", field(37, 9), field(32, 5),
                  field(26, 6), field(20, 6), field(0, 20));
    return text.data();
}

} // namespace telvo
