#include "Faults.h"

#include <algorithm>

namespace camera
{
namespace
{

constexpr std::size_t kReorderDistance = 4; // packets

bool useUp(std::uint32_t& times)
{
    if (times != 0 && times != kForever) {
        --times;
        return true;
    }
    return times != 0;
}

bool concerns(const AccessFault& fault, FeatureId feature, bool write)
{
    const AccessKind kind = write ? AccessKind::Write : AccessKind::Read;
    return fault.feature == feature && (fault.access == AccessKind::Any || fault.access == kind);
}

} // namespace

void Faults::setPacketRates(const PacketRates& rates)
{
    const std::scoped_lock lock(mLock);
    mRates = rates;
    updateDisturbance();
}

void Faults::add(const PacketFault& fault)
{
    const std::scoped_lock lock(mLock);
    mPacketFaults.push_back(fault);
    updateDisturbance();
}

void Faults::add(const FrameFault& fault)
{
    const std::scoped_lock lock(mLock);
    mFrameFaults.push_back(fault);
}

void Faults::add(const AccessFault& fault)
{
    const std::scoped_lock lock(mLock);
    mAccessFaults.push_back(fault);
}

void Faults::setFrameLoss(double rate)
{
    const std::scoped_lock lock(mLock);
    mFrameLoss = rate;
}

void Faults::setAvailable(FeatureId feature, bool available)
{
    const std::scoped_lock lock(mLock);
    if (available) {
        mUnavailable.erase(feature);
    } else {
        mUnavailable.insert(feature);
    }
}

void Faults::clear()
{
    mSilent = false;
    mIgnoreTestPackets = false;
    mOrderedRange = false;
    mSerialLimit = kForever;
    mPacketSizeLimit = kForever;
    const std::scoped_lock lock(mLock);
    mRates = {};
    mFrameLoss = 0;
    mPacketFaults.clear();
    mFrameFaults.clear();
    mAccessFaults.clear();
    mUnavailable.clear();
    updateDisturbance();
}

bool Faults::isAvailable(FeatureId feature) const
{
    const std::scoped_lock lock(mLock);
    return !mUnavailable.contains(feature);
}

std::optional<AccessFault> Faults::onAccess(FeatureId feature, bool write)
{
    const std::scoped_lock lock(mLock);
    for (AccessFault& fault : mAccessFaults) {
        if (concerns(fault, feature, write) && !useUp(fault.after) && useUp(fault.times)) {
            return fault;
        }
    }
    return std::nullopt;
}

std::optional<FrameFault> Faults::onFrame(std::uint32_t position)
{
    const std::scoped_lock lock(mLock);
    for (FrameFault& fault : mFrameFaults) {
        if (fault.position == position && useUp(fault.times)) {
            return fault;
        }
    }
    return happens(mFrameLoss) ? std::optional{FrameFault{}} : std::nullopt;
}

void Faults::packetSteps(std::uint32_t lastPacket, std::vector<PacketStep>& steps)
{
    const std::scoped_lock lock(mLock);
    steps.clear();
    mReordered.clear();
    for (std::uint32_t id = 0; id <= lastPacket; ++id) {
        const std::optional<PacketFault> fault = faultOf(id);
        const auto is = [&fault](PacketFaultKind kind) { return fault && fault->kind == kind; };
        if (is(PacketFaultKind::Lose) || happens(mRates.lose)) {
            continue;
        }
        PacketStep step{.packetId = id};
        if (is(PacketFaultKind::Delay)) {
            step.pauseBefore = fault->pause;
        } else if (happens(mRates.delay)) {
            step.pauseBefore = mRates.pause;
        }
        steps.push_back(step);
        if (is(PacketFaultKind::Repeat) || happens(mRates.repeat)) {
            steps.push_back({.packetId = id});
        }
        if (is(PacketFaultKind::Reorder) || happens(mRates.reorder)) {
            mReordered.push_back(id);
        }
    }
    reorder(steps);
    std::erase_if(mPacketFaults, [](PacketFault& fault) {
        useUp(fault.blocks);
        return fault.blocks == 0;
    });
    updateDisturbance();
}

bool Faults::losesResend()
{
    const std::scoped_lock lock(mLock);
    return happens(mRates.lose);
}

void Faults::updateDisturbance()
{
    mDisturbsPackets = mRates.lose > 0 || mRates.repeat > 0 || mRates.reorder > 0 ||
                       mRates.delay > 0 || !mPacketFaults.empty();
}

bool Faults::happens(double rate)
{
    return rate > 0 && std::generate_canonical<double, 32>(mRandom) < rate;
}

std::optional<PacketFault> Faults::faultOf(std::uint32_t packetId) const
{
    const auto fault = std::ranges::find(mPacketFaults, packetId, &PacketFault::packetId);
    return fault == mPacketFaults.end() ? std::nullopt : std::optional{*fault};
}

void Faults::reorder(std::vector<PacketStep>& steps)
{
    std::size_t from = 0;
    for (const std::uint32_t id : mReordered) {
        const auto start = steps.begin() + static_cast<std::ptrdiff_t>(from);
        const auto step = std::ranges::find(start, steps.end(), id, &PacketStep::packetId);
        const auto left = static_cast<std::size_t>(steps.end() - step);
        const std::size_t shift = std::min(kReorderDistance, left - 1);
        std::rotate(step, step + 1, step + static_cast<std::ptrdiff_t>(shift) + 1);
        from = static_cast<std::size_t>(step - steps.begin());
    }
}

} // namespace camera
