// The camera's flash card and the copy of a recording to it.

#include "AccessVariants.h"
#include "CQuorGrabber.h"

namespace
{

constexpr PlainAccess<PvGenBoolean> kFlashCardAvailable{"FlashCardAvailable", {}, {}};
constexpr PlainAccess<PvGenBoolean> kWriteAfterRecord{"FlashCardWriteAfterRecordEnable", {}, {}};

} // namespace

std::int32_t CQuorGrabber::isFlashCardAvailable(std::uint8_t* available)
{
    *available = 0;
    return runAvailableRead(kFlashCardAvailable, mFeatures, available);
}

std::int32_t CQuorGrabber::startWriteToFlash()
{
    const std::int32_t result = runAvailableCommand("FlashCardWrite", mFeatures);
    if (result == kSuccess) {
        mMode.flashWriteStopped = false;
    }
    return result;
}

std::int32_t CQuorGrabber::stopWriteToFlash()
{
    const std::int32_t result = runAvailableCommand("FlashCardWriteStop", mFeatures);
    if (result == kSuccess) {
        mMode.flashWriteStopped = true;
    }
    return result;
}

std::int32_t CQuorGrabber::enableFlashWriteAfterRecordStop(bool enable)
{
    const std::int32_t result = runAvailableWrite(kWriteAfterRecord, mFeatures, enable);
    if (result == kSuccess) {
        mMode.flashAfterRecord = enable;
    }
    return result;
}

std::int32_t CQuorGrabber::isFlashWriteAfterRecordStopEnabled(std::uint8_t* enabled)
{
    const std::int32_t result = runAvailableRead(kWriteAfterRecord, mFeatures, enabled);
    if (result == kSuccess) {
        mMode.flashAfterRecord = *enabled != 0;
    }
    return result;
}
