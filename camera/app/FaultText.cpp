#include "FaultText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>
#include <string>
#include <vector>

namespace camera
{
namespace
{

template <typename Kind>
struct KindName {
    std::string_view name;
    Kind kind;
};

constexpr std::array kPacketKinds{
    KindName<PacketFaultKind>{"lose", PacketFaultKind::Lose},
    KindName<PacketFaultKind>{"repeat", PacketFaultKind::Repeat},
    KindName<PacketFaultKind>{"reorder", PacketFaultKind::Reorder},
    KindName<PacketFaultKind>{"delay", PacketFaultKind::Delay},
};
constexpr std::array kFrameKinds{
    KindName<FrameFaultKind>{"lose", FrameFaultKind::Lose},
    KindName<FrameFaultKind>{"repeat", FrameFaultKind::Repeat},
    KindName<FrameFaultKind>{"reorder", FrameFaultKind::Reorder},
    KindName<FrameFaultKind>{"jump", FrameFaultKind::JumpCounter},
    KindName<FrameFaultKind>{"stop", FrameFaultKind::StopMiddle},
    KindName<FrameFaultKind>{"silence", FrameFaultKind::Silence},
};
constexpr std::array kAccessKinds{
    KindName<AccessFaultKind>{"reject", AccessFaultKind::Reject},
    KindName<AccessFaultKind>{"delay", AccessFaultKind::Delay},
    KindName<AccessFaultKind>{"late", AccessFaultKind::LateAck},
    KindName<AccessFaultKind>{"corrupt", AccessFaultKind::Corrupt},
    KindName<AccessFaultKind>{"drop", AccessFaultKind::DropAck},
    KindName<AccessFaultKind>{"double", AccessFaultKind::DoubleAck},
};

/// The colon-separated parts of a fault, taken one after the other.
class Parts
{
  public:
    explicit Parts(std::string_view text) : mRest(text) {}

    [[nodiscard]] bool hasMore() const { return !mRest.empty(); }
    std::string_view next(std::string_view what)
    {
        if (!hasMore()) {
            throw std::invalid_argument("the fault lacks its " + std::string(what));
        }
        const std::size_t colon = mRest.find(':');
        const std::string_view part = mRest.substr(0, colon);
        mRest = colon == std::string_view::npos ? std::string_view{} : mRest.substr(colon + 1);
        return part;
    }
    std::uint32_t number(std::string_view what) { return parseNumber(next(what)); }
    std::uint32_t numberOr(std::uint32_t otherwise)
    {
        return hasMore() ? number("number") : otherwise;
    }
    void finish() const
    {
        if (hasMore()) {
            throw std::invalid_argument("'" + std::string(mRest) + "' is too much for the fault");
        }
    }

  private:
    std::string_view mRest;
};

template <typename Kinds>
auto kindOf(const Kinds& kinds, std::string_view name)
{
    for (const auto& known : kinds) {
        if (known.name == name) {
            return known.kind;
        }
    }
    throw std::invalid_argument("'" + std::string(name) + "' is not a kind of fault");
}

std::uint16_t statusFrom(std::uint32_t number)
{
    if (number > 0xFFFF) {
        throw std::invalid_argument("a status has 16 bits");
    }
    return static_cast<std::uint16_t>(number);
}

} // namespace

PacketFault parsePacketFault(std::string_view text)
{
    Parts parts(text);
    PacketFault fault{.kind = kindOf(kPacketKinds, parts.next("kind"))};
    fault.packetId = parts.number("packet");
    fault.blocks = parts.numberOr(fault.blocks);
    parts.finish();
    return fault;
}

FrameFault parseFrameFault(std::string_view text)
{
    Parts parts(text);
    FrameFault fault{.kind = kindOf(kFrameKinds, parts.next("kind"))};
    fault.position = parts.number("position");
    fault.amount = parts.numberOr(fault.amount);
    fault.pause = std::chrono::milliseconds(parts.numberOr(0));
    fault.times = parts.numberOr(fault.times);
    parts.finish();
    return fault;
}

AccessFault parseAccessFault(std::string_view text)
{
    Parts parts(text);
    AccessFault fault{.kind = kindOf(kAccessKinds, parts.next("kind"))};
    fault.feature = parseFeature(parts.next("feature"));
    switch (fault.kind) {
    case AccessFaultKind::Reject:
        fault.access = AccessKind::Write;
        fault.status = gige::wire::GvcpStatus{
            statusFrom(parts.numberOr(static_cast<std::uint32_t>(fault.status)))};
        break;
    case AccessFaultKind::Delay:
    case AccessFaultKind::LateAck:
        fault.delay = std::chrono::milliseconds(parts.number("milliseconds"));
        break;
    case AccessFaultKind::Corrupt:
        fault.access = AccessKind::Read;
        fault.value = parts.number("value");
        break;
    case AccessFaultKind::DropAck:
    case AccessFaultKind::DoubleAck:
        break;
    }
    fault.times = parts.numberOr(fault.times);
    parts.finish();
    return fault;
}

FeatureId parseFeature(std::string_view name)
{
    const auto feature = findFeature(name);
    if (!feature) {
        throw std::invalid_argument("the camera has no feature '" + std::string(name) + "'");
    }
    return *feature;
}

std::uint32_t parseNumber(std::string_view text)
{
    if (text == "always") {
        return kForever;
    }
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    const std::string_view digits = isHex ? text.substr(2) : text;
    std::uint32_t value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [at, error] = std::from_chars(digits.data(), end, value, isHex ? 16 : 10);
    if (error != std::errc{} || at != end) {
        throw std::invalid_argument("'" + std::string(text) + "' is not a number");
    }
    return value;
}

} // namespace camera
