#include "DebugLog.h"
#include "Recording.h"

#include "TriggerWindow.h"

#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>

namespace
{

using camera::FeatureId;
using camera::VirtualCamera;

std::int32_t start(const Host& host)
{
    return expStartRecordMode(host.id());
}

std::int32_t stop(const Host& host)
{
    return expStopRecordMode(host.id());
}

bool isIdle(const Host& host)
{
    std::uint8_t idle = 0;
    return expIsStateIdle(&idle, host.id()) == 0 && idle == 1;
}

std::uint32_t allFrames(const Host& host)
{
    std::uint32_t frames = 0;
    expGetNumberOfAllRecordedFrames(&frames, host.id());
    return frames;
}

/// Reads the recording back in blocks.
testing::AssertionResult readsBack(const Host& host, const VirtualCamera& camera,
                                   std::uint32_t sequences = 1)
{
    if (expStartFrameBlockTransfer(host.id()) != 0) {
        return testing::AssertionFailure() << "the block transfer does not start";
    }
    for (std::uint32_t sequence = 0; sequence < sequences; ++sequence) {
        if (auto result = readsWholeSequence(host, camera, sequence); !result) {
            return result;
        }
    }
    return testing::AssertionSuccess();
}

/// Lets a recording go on until the ring is full and has lost its first frames.
bool hasWrapped(const VirtualCamera& camera)
{
    return eventually([&] {
        const auto oldest = camera.recordedFrame(0, 0);
        return oldest && oldest->number > 0;
    });
}

TEST(Record, InSingleModeEndsWhenTheMemoryIsFull)
{
    VirtualCamera camera(recordingCamera(30));
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera, patientSettings());
    ASSERT_EQ(expSetRecordMode(0, host.id()), 0);
    ASSERT_EQ(start(host), 0);
    ASSERT_TRUE(eventually([&] { return isIdle(host); })); // recorded, and live again
    EXPECT_EQ(camera.value(FeatureId::CameraState), camera::kStateLive);
    EXPECT_EQ(stop(host), 0);
    EXPECT_EQ(allFrames(host), 30U);
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    EXPECT_EQ(expGetLastRecordDimensions(&width, &height, host.id()), 0);
    EXPECT_EQ(width, 64U);
    EXPECT_EQ(height, 48U);
    EXPECT_EQ(stop(host), -1); // in playback
    EXPECT_TRUE(readsBack(host, camera));
    EXPECT_EQ(expStopFrameBlockTransfer(host.id()), 0);
}

TEST(Record, InContinuousModeKeepsTheNewestFramesUntilItIsStopped)
{
    VirtualCamera camera(recordingCamera(30));
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera, patientSettings());
    ASSERT_EQ(expSetRecordMode(1, host.id()), 0);
    ASSERT_EQ(start(host), 0);
    ASSERT_TRUE(hasWrapped(camera));
    EXPECT_FALSE(isIdle(host));
    EXPECT_EQ(start(host), 0); // runs already
    EXPECT_EQ(camera.log().valuesWritten(FeatureId::RecordStart).size(), 1U);
    EXPECT_EQ(stop(host), 0);
    EXPECT_EQ(allFrames(host), 30U);
    EXPECT_GT(camera.recordedFrame(0, 0)->number, 0U);
    EXPECT_TRUE(readsBack(host, camera));
}

TEST(Record, ShowsAPreviewMeanwhile)
{
    VirtualCamera camera(recordingCamera(100'000));
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera, patientSettings());
    ASSERT_EQ(start(host), 0);
    EXPECT_EQ(camera.value(FeatureId::CameraState), camera::kStateRecording);
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(showsScene(host.nextImage(), camera.recordedView()));
    }
    std::uint32_t result = 4711;
    std::uint32_t flag = 0;
    std::uint8_t status = 0;
    std::uint8_t last = 9;
    EXPECT_TRUE(eventually([&] {
        return expGetSingleImage(&result, &flag, &status, &last, host.id()) != nullptr &&
               flag == 0xFFFFFFFF; // taken while recording, not just before
    }));
    EXPECT_EQ(result, 0U);
    EXPECT_EQ(status, 0xFF & ~camera::kFlagRecording); // as inverted bits
    EXPECT_EQ(last, 0);
    const std::int32_t count = expGetCurrentNumberOfImages(host.id());
    EXPECT_TRUE(eventually([&] { return expGetCurrentNumberOfImages(host.id()) > count; }));
    EXPECT_EQ(stop(host), 0);
    EXPECT_TRUE(host.previewImage().empty());
}

TEST(Record, StoppedWithFlashCopyGivesTwoAndIsStoppedOnceMoreAfterTheCopy)
{
    camera::CameraOptions options = recordingCamera(30);
    options.flashBytesPerSecond = 1; // the copy ends when it is told to
    VirtualCamera camera(options);
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera, patientSettings());
    ASSERT_EQ(expEnableFlashWriteAfterRecordStop(1, host.id()), 0);
    ASSERT_EQ(start(host), 0);
    EXPECT_EQ(stop(host), 2);
    std::uint8_t isWriting = 0;
    EXPECT_EQ(expIsStateFlashWrite(&isWriting, host.id()), 0);
    EXPECT_EQ(isWriting, 1);
    EXPECT_FALSE(isIdle(host));
    EXPECT_EQ(expStopWriteToFlash(host.id()), 0);
    EXPECT_TRUE(isIdle(host));
    EXPECT_EQ(stop(host), 0);
    EXPECT_GT(allFrames(host), 0U); // the copy keeps the recording
    EXPECT_TRUE(readsBack(host, camera));
}

TEST(Record, StoppedWithAFlashCopyThatHasEndedGivesTwoAsWell)
{
    camera::CameraOptions options = recordingCamera(30);
    options.flashBytesPerSecond = 1'000'000'000;
    VirtualCamera camera(options);
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera, patientSettings());
    ASSERT_EQ(expEnableFlashWriteAfterRecordStop(1, host.id()), 0);
    ASSERT_EQ(start(host), 0);
    EXPECT_EQ(stop(host), 2);
    EXPECT_TRUE(isIdle(host));
}

TEST(Record, StoppedInStandbyGivesThreeAndLeavesTheCameraReadyForATrigger)
{
    VirtualCamera camera(recordingCamera(30));
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera, patientSettings());
    ASSERT_EQ(expEnableRecordStandby(1, host.id()), 0);
    ASSERT_EQ(start(host), 0);
    ASSERT_TRUE(eventually([&] { return isIdle(host); }));
    EXPECT_EQ(stop(host), 3);
    EXPECT_EQ(camera.log().writes().back().feature, FeatureId::RecordStop);
    EXPECT_EQ(stop(host), 0); // idle
    const auto before = camera.recordedFrame(0, 0);
    ASSERT_EQ(expEnableExternalTrigger(1, host.id()), 0);
    EXPECT_TRUE(camera.trigger());
    EXPECT_TRUE(hasFinished(camera));
    EXPECT_EQ(allFrames(host), 30U);
    EXPECT_NE(camera.recordedFrame(0, 0)->time, before->time); // new ones
}

TEST(Record, AbortKeepsWhatWasRecordedSoFar)
{
    VirtualCamera camera(recordingCamera(100'000));
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera, patientSettings());
    DebugLog log;
    ASSERT_EQ(start(host), 0);
    ASSERT_TRUE(eventually([&] { return allFrames(host) > 20; }));
    EXPECT_EQ(expAbortRecording(host.id()), 0);
    EXPECT_TRUE(contains(log.take(), "Abort recording."));
    EXPECT_TRUE(isIdle(host));
    EXPECT_TRUE(readsBack(host, camera));
}

TEST(Record, ATriggerAndItsTrailerEndEachOfFourSequences)
{
    VirtualCamera camera(recordingCamera(4 * 30));
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera, patientSettings());
    ASSERT_EQ(expSetRecordMode(1, host.id()), 0);
    ASSERT_EQ(expSetNumberOfRecordSequences(4, host.id()), 0);
    ASSERT_EQ(expSetTrailerCounter(10, host.id()), 0);
    ASSERT_EQ(expEnableExternalTrigger(1, host.id()), 0);
    std::uint32_t perSequence = 0;
    EXPECT_EQ(expGetMaxFramesPerSequence(&perSequence, host.id()), 0);
    EXPECT_EQ(perSequence, 30U);
    ASSERT_EQ(start(host), 0);
    for (std::uint32_t sequence = 0; sequence < 4; ++sequence) {
        std::uint32_t current = 4711;
        EXPECT_EQ(expGetCurrentRecordingSequence(&current, host.id()), 0);
        EXPECT_EQ(current, sequence);
        EXPECT_TRUE(camera.trigger());
        EXPECT_TRUE(eventually([&] {
            expGetCurrentRecordingSequence(&current, host.id());
            return current > sequence || isIdle(host);
        }));
    }
    ASSERT_TRUE(eventually([&] { return isIdle(host); }));
    EXPECT_EQ(stop(host), 0);
    for (std::uint32_t sequence = 0; sequence < 4; ++sequence) {
        const std::uint32_t frames = recordedFrames(camera, sequence);
        ASSERT_GE(frames, 10U);
        const auto first = camera.recordedFrame(sequence, frames - 10);
        EXPECT_EQ(first->flags & camera::kFlagTrigger, camera::kFlagTrigger);
        EXPECT_TRUE(camera.recordedFrame(sequence, frames - 1)->last);
    }
    EXPECT_TRUE(readsBack(host, camera, 4));
}

TEST(Record, TellsThatTheTrailerIsBeingRecorded)
{
    VirtualCamera camera(recordingCamera(100'000));
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera, patientSettings());
    ASSERT_EQ(expSetRecordMode(1, host.id()), 0);
    ASSERT_EQ(expSetTrailerCounter(90'000, host.id()), 0); // 45 s
    ASSERT_EQ(expEnableExternalTrigger(1, host.id()), 0);
    ASSERT_EQ(start(host), 0);
    std::uint8_t isActive = 9;
    EXPECT_EQ(expIsTrailerRecordingActive(&isActive, host.id()), 0);
    EXPECT_EQ(isActive, 0);
    camera.trigger();
    EXPECT_EQ(expIsTrailerRecordingActive(&isActive, host.id()), 0);
    EXPECT_EQ(isActive, 1);
}

TEST(Record, InSingleModeEachTriggerTakesABurst)
{
    VirtualCamera camera(recordingCamera(20));
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera, patientSettings());
    ASSERT_EQ(expEnableExternalTrigger(1, host.id()), 0);
    ASSERT_EQ(expSetSingleSettingRecordBurstCnt(10, host.id()), 0);
    ASSERT_EQ(start(host), 0);
    ASSERT_FALSE(host.nextImage().empty()); // shown, but not kept
    EXPECT_EQ(allFrames(host), 0U);
    camera.trigger();
    EXPECT_TRUE(eventually([&] { return allFrames(host) == 10; }));
    EXPECT_FALSE(isIdle(host));
    camera.trigger();
    EXPECT_TRUE(eventually([&] { return isIdle(host); })); // full
    EXPECT_EQ(stop(host), 0);
    EXPECT_EQ(allFrames(host), 20U);
    EXPECT_TRUE(readsBack(host, camera));
}

TEST(Record, RecordsWhileTheTriggerInputIsActive)
{
    VirtualCamera camera(recordingCamera(100'000));
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera, patientSettings());
    ASSERT_EQ(expSetExternalTriggerPolarity(1, host.id()), 0); // rising
    ASSERT_EQ(expSetSingleSettingRecordWhileTrigger(1, host.id()), 0);
    ASSERT_EQ(start(host), 0);
    ASSERT_FALSE(host.nextImage().empty());
    EXPECT_EQ(allFrames(host), 0U);
    camera.setTriggerInput(true);
    EXPECT_TRUE(eventually([&] { return allFrames(host) > 5; }));
    camera.setTriggerInput(false);
    const std::uint32_t frames = allFrames(host);
    ASSERT_FALSE(host.nextImage().empty());
    EXPECT_EQ(allFrames(host), frames);
}

TEST(Record, WhatTheTriggerWindowSeesEndsTheRecording)
{
    camera::CameraOptions options = recordingCamera(100'000);
    options.settings[FeatureId::OffsetX] = 416; // where the ball comes by
    options.settings[FeatureId::OffsetY] = 176;
    VirtualCamera camera(options);
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera, patientSettings());
    // The brightest that the window gets, and the first frame in which it is so bright.
    const camera::TriggerWindow window{.left = 16, .top = 8, .width = 32, .height = 32};
    std::uint32_t brightest = 0;
    std::uint32_t released = 0;
    for (std::uint32_t frame = 0; frame < 100; ++frame) {
        const std::uint32_t mean = window.mean(camera.liveView(), 0, frame);
        released = mean > brightest ? frame : released;
        brightest = std::max(brightest, mean);
    }
    ASSERT_GT(released, 0U);
    ASSERT_EQ(expSetRecordMode(1, host.id()), 0);
    ASSERT_EQ(expSetTrailerCounter(10, host.id()), 0);
    ASSERT_EQ(expSetFrameTrigger(window.top, window.left, window.width, window.height, 0, brightest,
                                 host.id()),
              0);
    ASSERT_EQ(expEnableFrameTrigger(1, host.id()), 0);
    ASSERT_EQ(start(host), 0);
    ASSERT_TRUE(eventually([&] { return isIdle(host); }));
    EXPECT_EQ(allFrames(host), released + 1 + 10);
    EXPECT_EQ(camera.recordedFrame(0, released + 1)->flags & camera::kFlagTrigger,
              camera::kFlagTrigger);
    EXPECT_EQ(stop(host), 0);
    EXPECT_TRUE(readsBack(host, camera));
}

TEST(Record, ACameraThatRecordsSincePowerOnIsAttachedTo)
{
    camera::CameraOptions options = recordedCamera(100'000);
    options.settings[FeatureId::AcquisitionFrameRateRaw] = 200;
    VirtualCamera camera(options);
    ASSERT_FALSE(camera.start());
    Host host;
    ASSERT_EQ(host.connect(camera), 0);
    EXPECT_EQ(host.initialize(), 1);
    EXPECT_EQ(camera.value(FeatureId::CameraState), camera::kStateRecording);
    EXPECT_EQ(lastWritten(camera, FeatureId::RecordStart), std::nullopt);
    EXPECT_EQ(lastWritten(camera, FeatureId::AcquisitionStop), std::nullopt);
    EXPECT_TRUE(showsScene(host.nextImage(), camera.recordedView()));
    EXPECT_EQ(stop(host), 0);
    EXPECT_EQ(camera.recordedFrame(0, 0)->number, 0U); // from the first moment on
    EXPECT_GT(allFrames(host), 0U);
    EXPECT_TRUE(readsBack(host, camera));
}

TEST(Record, GoesOnWhileTheHostIsAway)
{
    camera::CameraOptions options = recordingCamera(100'000);
    options.settings[FeatureId::AcquisitionFrameRateRaw] = 200;
    VirtualCamera camera(options);
    ASSERT_FALSE(camera.start());
    TelvoConnectionSettings settings = patientSettings();
    settings.heartbeatTimeout = 1000;
    settings.heartbeatInterval = 200;
    settings.answerTimeout = 200;
    Host first(1);
    first.open(camera, settings);
    static std::atomic<bool> isLost;
    isLost = false;
    expSetChangedCallback([](std::int32_t) { isLost = true; }, first.id());
    ASSERT_EQ(start(first), 0);
    camera.faults().setSilent(true); // the cable is pulled
    ASSERT_TRUE(eventually([] { return isLost.load(); }, 20s));
    EXPECT_EQ(first.disconnect(), 0);
    camera.faults().setSilent(false);
    Host second(2);
    ASSERT_TRUE(eventually([&] { return second.connect(camera, settings) == 0; }, 20s));
    EXPECT_EQ(second.initialize(settings), 1);
    EXPECT_TRUE(showsScene(second.nextImage(), camera.recordedView()));
    EXPECT_EQ(stop(second), 0);
    EXPECT_EQ(camera.log().valuesWritten(FeatureId::RecordStart).size(), 1U);
    EXPECT_TRUE(readsBack(second, camera));
}

TEST(Record, TwoCamerasRecordAndReadOutAtTheSameTime)
{
    VirtualCamera first(recordingCamera(60, "127.0.0.11"));
    VirtualCamera second(recordingCamera(60, "127.0.0.12"));
    ASSERT_FALSE(first.start());
    ASSERT_FALSE(second.start());
    Host hostOfFirst(1);
    Host hostOfSecond(2);
    hostOfFirst.open(first, patientSettings());
    hostOfSecond.open(second, featureSettings());
    std::uint32_t width = 128;
    ASSERT_EQ(expSetWidth(&width, hostOfSecond.id()), 0);
    ASSERT_EQ(start(hostOfFirst), 0);
    ASSERT_EQ(start(hostOfSecond), 0);
    ASSERT_TRUE(eventually([&] { return isIdle(hostOfFirst) && isIdle(hostOfSecond); }));
    EXPECT_EQ(stop(hostOfFirst), 0);
    EXPECT_EQ(stop(hostOfSecond), 0);
    ASSERT_EQ(expStartFrameBlockTransfer(hostOfFirst.id()), 0);
    ASSERT_EQ(expStartFrameBlockTransfer(hostOfSecond.id()), 0);
    for (const FrameRange range : {FrameRange{0, 0, 15}, FrameRange{0, 15, 15}}) {
        EXPECT_EQ(requestBlock(hostOfFirst, range), 0);
        EXPECT_EQ(requestBlock(hostOfSecond, range), 0);
        EXPECT_TRUE(collectsRecorded(hostOfFirst, first, range));
        EXPECT_TRUE(collectsRecorded(hostOfSecond, second, range));
    }
}

} // namespace
