/// The camera's flash card and the copy of a recording to it.
#ifndef TELVO_SRC_FEATURES_FLASHCARD_H
#define TELVO_SRC_FEATURES_FLASHCARD_H

#include "AccessVariants.h"

inline constexpr BooleanAccess kIsFlashCardAvailable{
    .feature = "FlashCardAvailable", .offer = Offer::Asked, .failedRead = FailedRead::ShowsZero};

Outcome startWriteToFlash(CameraSettings& camera);
Outcome stopWriteToFlash(CameraSettings& camera);
Outcome enableFlashWriteAfterRecordStop(CameraSettings& camera, bool enable);
Reading<bool> isFlashWriteAfterRecordStopEnabled(CameraSettings& camera);

#endif
