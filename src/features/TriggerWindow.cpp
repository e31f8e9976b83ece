// The rectangle of the image whose content can release a trigger ("IB…").

#include "AccessVariants.h"
#include "CQuorGrabber.h"

namespace
{

using I32 = std::int32_t;

constexpr PlainAccess<PvGenBoolean> kEnableFrameTrigger{"IBEnable", {}, {}};
constexpr PlainAccess<PvGenBoolean> kIsFrameTriggerEnabled{
    "IBEnable", "-- GEN isFrameTriggerEnabled %d", "-- GEN isFrameTriggerEnabled Error"};
constexpr PlainAccess<PvGenBoolean> kEnableTriggerWindow{"IBWindowVisible", {}, {}};
constexpr PlainAccess<PvGenBoolean> kIsImageVantoAvailable{"ImageVANTOAvailable", {}, {}};

constexpr PlainAccess<PvGenInteger> kSetTriggerLeft{"IBOffsetX", "-- GEN setTriggerLeft: %d",
                                                    "-- GEN setTriggerLeft Error"};
constexpr PlainAccess<PvGenInteger> kSetTriggerTop{"IBOffsetY", "-- GEN setTriggerTop: %d",
                                                   "-- GEN setTriggerTop Error"};
constexpr PlainAccess<PvGenInteger> kSetTriggerWidth{"IBWidth", "-- GEN setTriggerWidth : %d",
                                                     "-- GEN setTriggerWidth Error"};
constexpr PlainAccess<PvGenInteger> kSetTriggerHeight{"IBHeight", "-- GEN setTriggerHeight: %d",
                                                      "-- GEN setTriggerHeight Error"};
constexpr PlainAccess<PvGenInteger> kSetTriggerThreshold{
    "IBThreshold", "-- GEN setTriggerThreshold: %d", "-- GEN setTriggerThreshold Error"};
constexpr PlainAccess<PvGenInteger> kSetTriggerCondition{
    "IBReleaseCondition", "-- GEN setTriggerCondition: %d", "-- GEN setTriggerCondition Error"};

constexpr PlainAccess<PvGenInteger> kGetTriggerLeft{"IBOffsetX", {}, {}};
constexpr PlainAccess<PvGenInteger> kGetTriggerTop{"IBOffsetY", {}, {}};
constexpr PlainAccess<PvGenInteger> kGetTriggerWidth{"IBWidth", {}, {}};
constexpr PlainAccess<PvGenInteger> kGetTriggerHeight{"IBHeight", {}, {}};
constexpr PlainAccess<PvGenInteger> kGetTriggerThreshold{"IBThreshold", {}, {}};
constexpr PlainAccess<PvGenInteger> kGetTriggerCondition{"IBReleaseCondition", {}, {}};

} // namespace

std::int32_t CQuorGrabber::enableFrameTrigger(bool enable)
{
    return runPlainWrite(kEnableFrameTrigger, mFeatures, enable);
}

std::int32_t CQuorGrabber::isFrameTriggerEnabled(std::uint8_t* enabled)
{
    return runPlainRead(kIsFrameTriggerEnabled, mFeatures, enabled);
}

std::int32_t CQuorGrabber::enableTriggerWindow(bool enable)
{
    return runPlainWrite(kEnableTriggerWindow, mFeatures, enable);
}

std::int32_t CQuorGrabber::isImageVantoAvailable(std::uint8_t* available)
{
    *available = 0;
    return runPlainRead(kIsImageVantoAvailable, mFeatures, available);
}

std::int32_t CQuorGrabber::setFrameTrigger(std::int32_t top, std::int32_t left, std::int32_t width,
                                           std::int32_t height, std::int32_t releaseCondition,
                                           std::int32_t threshold)
{
    const auto write = [this](const PlainAccess<PvGenInteger>& row, I32 value) {
        return runPlainWrite(row, mFeatures, value) == kSuccess;
    };
    // At the origin the window may have any size that the sensor allows.
    (void)write(kSetTriggerLeft, 0);
    (void)write(kSetTriggerTop, 0);
    const bool isWritten = write(kSetTriggerWidth, width) && write(kSetTriggerHeight, height) &&
                           write(kSetTriggerLeft, left) && write(kSetTriggerTop, top) &&
                           // Size again: only now is the window at its final position.
                           write(kSetTriggerWidth, width) && write(kSetTriggerHeight, height) &&
                           write(kSetTriggerThreshold, threshold) &&
                           write(kSetTriggerCondition, releaseCondition);
    return isWritten ? kSuccess : kFailure;
}

std::int32_t CQuorGrabber::getFrameTrigger(std::int32_t* top, std::int32_t* left,
                                           std::int32_t* width, std::int32_t* height,
                                           std::int32_t* releaseCondition, std::int32_t* threshold)
{
    const auto read = [this](const PlainAccess<PvGenInteger>& row, I32* value) {
        return runPlainRead(row, mFeatures, value) == kSuccess;
    };
    const bool isRead = read(kGetTriggerWidth, width) && read(kGetTriggerHeight, height) &&
                        read(kGetTriggerLeft, left) && read(kGetTriggerTop, top) &&
                        read(kGetTriggerThreshold, threshold) &&
                        read(kGetTriggerCondition, releaseCondition);
    return isRead ? kSuccess : kFailure;
}

std::int32_t CQuorGrabber::updateTriggerValues(std::int32_t releaseCondition,
                                               std::int32_t threshold)
{
    const std::int32_t result = runPlainWrite(kSetTriggerThreshold, mFeatures, threshold);
    return result == kSuccess ? runPlainWrite(kSetTriggerCondition, mFeatures, releaseCondition)
                              : result;
}
