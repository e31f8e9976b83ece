#include "FlashMode.h"

#include "IdleMode.h"
#include "PanelMessages.h"
#include "RecordingEnd.h"

#include "TelvoDll.h"

namespace telvo
{

namespace
{

constexpr std::chrono::milliseconds kCopyInterval{50};

} // namespace

bool hasFlashCard(const CameraSession& camera)
{
    std::uint8_t card = 0;
    return expIsFlashCardAvailable(&card, camera.id()) == 0 && card != 0;
}

FlashMode::FlashMode(const CameraSession& camera, After after) : mCamera(camera), mAfter(after) {}

DeskMode::Step FlashMode::step()
{
    std::uint8_t writing = 0;
    const bool isKnown = expIsStateFlashWrite(&writing, mCamera.id()) == 0;
    mCamera.requireLink();
    if (!isKnown || writing != 0) {
        return {.wait = kCopyInterval};
    }
    if (mAfter == After::Recording && !stopRecording(mCamera)) {
        return {.wait = kCopyInterval}; // another recording, another copy
    }
    return {.next = std::make_unique<IdleMode>(mCamera, "the copy to the flash card has ended")};
}

Json FlashMode::state() const
{
    const std::chrono::duration<double> time = Clock::now() - mStart;
    return {{"state", "flash"},
            {"text", "copying the recording to the flash card"},
            {"elapsed", tenths(time.count())}};
}

} // namespace telvo
