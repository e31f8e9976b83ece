#include "FlashCard.h"

namespace
{

constexpr BooleanAccess kWriteAfterRecord{.feature = "FlashCardWriteAfterRecordEnable",
                                          .offer = Offer::Asked};

} // namespace

Outcome startWriteToFlash(CameraSettings& camera)
{
    const Outcome outcome = executeOffered(camera, "FlashCardWrite");
    if (outcome == Outcome::Done) {
        camera.flashCopy.isStopped = false;
    }
    return outcome;
}

Outcome stopWriteToFlash(CameraSettings& camera)
{
    const Outcome outcome = executeOffered(camera, "FlashCardWriteStop");
    if (outcome == Outcome::Done) {
        camera.flashCopy.isStopped = true;
    }
    return outcome;
}

Outcome enableFlashWriteAfterRecordStop(CameraSettings& camera, bool enable)
{
    const Outcome outcome = write(camera, kWriteAfterRecord, enable);
    if (outcome == Outcome::Done) {
        camera.flashCopy.isAfterRecord = enable;
    }
    return outcome;
}

Reading<bool> isFlashWriteAfterRecordStopEnabled(CameraSettings& camera)
{
    const Reading<bool> reading = read(camera, kWriteAfterRecord);
    if (reading.isDone()) {
        camera.flashCopy.isAfterRecord = *reading.value;
    }
    return reading;
}
