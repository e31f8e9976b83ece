#include "TriggerWindow.h"

namespace
{

constexpr IntegerAccess kSetTriggerLeft{"IBOffsetX", "-- GEN setTriggerLeft: %d",
                                        "-- GEN setTriggerLeft Error"};
constexpr IntegerAccess kSetTriggerTop{"IBOffsetY", "-- GEN setTriggerTop: %d",
                                       "-- GEN setTriggerTop Error"};
constexpr IntegerAccess kSetTriggerWidth{"IBWidth", "-- GEN setTriggerWidth : %d",
                                         "-- GEN setTriggerWidth Error"};
constexpr IntegerAccess kSetTriggerHeight{"IBHeight", "-- GEN setTriggerHeight: %d",
                                          "-- GEN setTriggerHeight Error"};
constexpr IntegerAccess kSetTriggerThreshold{"IBThreshold", "-- GEN setTriggerThreshold: %d",
                                             "-- GEN setTriggerThreshold Error"};
constexpr IntegerAccess kSetTriggerCondition{"IBReleaseCondition", "-- GEN setTriggerCondition: %d",
                                             "-- GEN setTriggerCondition Error"};

struct PartRead {
    IntegerAccess row;
    std::optional<std::int32_t> TriggerWindowParts::*part;
};

constexpr PartRead kPartReads[] = {
    {{"IBWidth"}, &TriggerWindowParts::width},
    {{"IBHeight"}, &TriggerWindowParts::height},
    {{"IBOffsetX"}, &TriggerWindowParts::left},
    {{"IBOffsetY"}, &TriggerWindowParts::top},
    {{"IBThreshold"}, &TriggerWindowParts::threshold},
    {{"IBReleaseCondition"}, &TriggerWindowParts::releaseCondition},
};

} // namespace

Outcome setFrameTrigger(CameraSettings& camera, const TriggerWindow& window)
{
    const auto isWritten = [&](const IntegerAccess& row, std::int32_t value) {
        return write(camera, row, value) == Outcome::Done;
    };
    // At the origin the window may have any size that the sensor allows.
    (void)isWritten(kSetTriggerLeft, 0);
    (void)isWritten(kSetTriggerTop, 0);
    return doneIf(
        isWritten(kSetTriggerWidth, window.width) && isWritten(kSetTriggerHeight, window.height) &&
        isWritten(kSetTriggerLeft, window.left) && isWritten(kSetTriggerTop, window.top) &&
        // Size again: only now is the window at its final position.
        isWritten(kSetTriggerWidth, window.width) && isWritten(kSetTriggerHeight, window.height) &&
        isWritten(kSetTriggerThreshold, window.threshold) &&
        isWritten(kSetTriggerCondition, window.releaseCondition));
}

TriggerWindowParts getFrameTrigger(CameraSettings& camera)
{
    TriggerWindowParts parts;
    for (const PartRead& read : kPartReads) {
        const Reading<std::int32_t> reading = ::read(camera, read.row);
        if (!reading.isDone()) {
            break;
        }
        parts.*read.part = reading.value;
    }
    return parts;
}

Outcome updateTriggerValues(CameraSettings& camera, std::int32_t releaseCondition,
                            std::int32_t threshold)
{
    const Outcome outcome = write(camera, kSetTriggerThreshold, threshold);
    return outcome == Outcome::Done ? write(camera, kSetTriggerCondition, releaseCondition)
                                    : outcome;
}
