#include "RecordRun.h"

#include "CancelFlag.h"
#include "CountText.h"
#include "FrameCounter.h"
#include "ToolError.h"
#include "TriggerSearch.h"

#include "TelvoDll.h"

#include <algorithm>
#include <array>
#include <iomanip>
#include <span>
#include <sstream>
#include <thread>

namespace telvo
{

namespace
{

constexpr std::chrono::milliseconds kRecordPoll{20};
constexpr std::size_t kFrameHeaderSize = 16; // bytes

struct CauseText {
    const char* key;
    const char* text;
};

constexpr std::array<CauseText, 6> kCauses{{
    {"trigger", "the trigger"},
    {"full", "the camera, its memory full"},
    {"frames", "the number of frames"},
    {"time", "the time"},
    {"key", "the key"},
    {"stopped", "the user"},
}};

const CauseText& textOf(EndCause cause)
{
    return kCauses[static_cast<std::size_t>(cause)];
}

std::uint32_t framesInSequence(const CameraSession& camera, std::uint32_t sequence)
{
    expSetCurrentStreamSequence(&sequence, camera.id());
    std::uint32_t frames = 0;
    expGetCurrentNumberOfFramesInSequence(&frames, camera.id());
    return frames;
}

std::uint32_t sequencesOf(const CameraSession& camera)
{
    std::uint32_t sequences = 1;
    expGetNumberOfRecordSequences(&sequences, camera.id());
    return sequences;
}

/// The first frame behind the one that the preview showed when the key was pressed.
std::uint32_t findKey(const CameraSession& camera, std::uint16_t shown, std::uint32_t frames)
{
    std::uint64_t header = 0;
    std::uint8_t flags = 0;
    std::uint8_t extra = 0;
    const std::uint8_t* const last =
        frames == 0 ? nullptr
                    : expGetFramePointer(frames - 1, &header, &flags, &extra, camera.id());
    if (last == nullptr) {
        return frames;
    }
    const std::uint16_t newest = frameNumber({last, kFrameHeaderSize});
    return findGivenTrigger(shown, newest, frames).value_or(0);
}

void findTriggers(const CameraSession& camera, const RecordPlan& plan, std::uint32_t triggered,
                  std::vector<RecordedSequence>& sequences)
{
    for (std::uint32_t i = 0; i < std::min<std::size_t>(triggered, sequences.size()); ++i) {
        RecordedSequence& sequence = sequences[i];
        if (plan.isRing && sequence.frames >= plan.trailer) {
            sequence.trigger = sequence.frames - plan.trailer;
        }
    }
    std::uint32_t first = 0;
    expSetCurrentStreamSequence(&first, camera.id());
}

std::vector<RecordedSequence> sequencesAfter(const CameraSession& camera, const RecordPlan& plan,
                                             EndCause cause, std::uint32_t triggered,
                                             std::uint16_t keyCounter)
{
    const std::uint32_t count = plan.isRing ? sequencesOf(camera) : 1;
    std::vector<RecordedSequence> sequences(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        sequences[i].frames = framesInSequence(camera, i);
    }
    findTriggers(camera, plan, cause == EndCause::Trigger ? count : triggered, sequences);
    if (cause == EndCause::Key) {
        sequences[0].trigger = findKey(camera, keyCounter, sequences[0].frames);
    }
    return sequences;
}

/// What was asked for and did not come about.
std::string shortfallOf(const RecordPlan& plan, const RecordOutcome& outcome)
{
    if (plan.frames && outcome.frames < *plan.frames) {
        return countText(outcome.frames, "frame") + (outcome.frames == 1 ? " was" : " were") +
               " recorded, " + std::to_string(*plan.frames) +
               " were asked for; 'telvo download' reads what there is";
    }
    const bool cut = outcome.cause == EndCause::Stopped || outcome.cause == EndCause::Time;
    if (cut && plan.trigger != TriggerKind::None && (plan.isRing || outcome.frames == 0)) {
        return "no trigger came; look at its signal, 'telvo doctor' says what the camera waits for";
    }
    return outcome.cause == EndCause::Stopped && !plan.isOpen() ? "ended before it was done" : "";
}

} // namespace

RecordRun::RecordRun(const CameraSession& camera, RecordPlan plan, KeyPressed keyPressed)
    : mCamera(camera), mPlan(plan), mKeyPressed(std::move(keyPressed))
{
    if (expStartRecordMode(camera.id()) != 0) {
        camera.fail("cannot start recording ('telvo log' shows why)");
    }
    mIsRunning = true;
}

RecordRun::~RecordRun()
{
    if (mIsRunning) {
        expStopRecordMode(mCamera.id());
    }
}

void RecordRun::count()
{
    expGetNumberOfAllRecordedFrames(&mCounted, mCamera.id());
    mShown = static_cast<std::uint32_t>(expGetCurrentNumberOfImages(mCamera.id()));
}

/// A camera may count only once it has stopped, so that the preview counts, too. Not while it keeps
/// nothing before the trigger: the preview goes on meanwhile.
bool RecordRun::hasFrames() const
{
    const std::uint32_t kept =
        mPlan.trigger == TriggerKind::Camera ? mCounted : std::max(mCounted, mShown);
    const bool isLeast = mPlan.isRing && mPlan.trigger != TriggerKind::None;
    return mPlan.frames && !isLeast && kept >= *mPlan.frames;
}

bool RecordRun::isEndedByKey()
{
    if (mPlan.trigger != TriggerKind::Key) {
        return false;
    }
    const std::uint32_t now = std::max(mCounted, mShown);
    if (!mKeyFrame && mKeyPressed()) {
        mKeyFrame = mShown;
    }
    return mKeyFrame && now >= *mKeyFrame + mPlan.trailer;
}

bool RecordRun::isIdle() const
{
    std::uint8_t idle = 0;
    expIsStateIdle(&idle, mCamera.id());
    return idle != 0;
}

std::optional<EndCause> RecordRun::look()
{
    count();
    const bool idle = isIdle();
    mCamera.requireLink();
    if (idle) {
        return mPlan.isRing ? EndCause::Trigger : EndCause::Full;
    }
    if (isEndedByKey()) {
        return EndCause::Key;
    }
    if (hasFrames()) {
        return EndCause::Frames;
    }
    if (mPlan.time && Clock::now() - mStart >= *mPlan.time) {
        return EndCause::Time;
    }
    return std::nullopt;
}

RecordProgress RecordRun::progress() const
{
    std::uint8_t trailer = 0;
    expIsTrailerRecordingActive(&trailer, mCamera.id());
    return {.frames = std::max(mCounted, mShown),
            .time = Clock::now() - mStart,
            .waits = mPlan.trigger != TriggerKind::None && trailer == 0 && !mKeyFrame,
            .isAfterTrigger = trailer != 0};
}

std::string RecordProgress::text() const
{
    std::ostringstream text;
    text << (waits            ? "waiting for the trigger, "
             : isAfterTrigger ? "after the trigger, "
                              : "")
         << countText(frames, "frame") << ", " << std::fixed << std::setprecision(1) << time.count()
         << " s";
    return text.str();
}

std::optional<std::uint16_t> RecordRun::keyCounter() const
{
    return mKeyFrame ? std::optional(counterOf(*mKeyFrame)) : std::nullopt;
}

std::optional<RecordingEnd> RecordRun::stop()
{
    expGetCurrentRecordingSequence(&mTriggered, mCamera.id());
    mIsRunning = false;
    return stopRecording(mCamera);
}

RecordOutcome RecordRun::outcome(EndCause cause, RecordingEnd end) const
{
    RecordOutcome outcome{.cause = cause, .end = end};
    expGetNumberOfAllRecordedFrames(&outcome.frames, mCamera.id());
    expGetLastRecordDimensions(&outcome.width, &outcome.height, mCamera.id());
    outcome.sequences = sequencesAfter(mCamera, mPlan, cause, mTriggered, keyCounter().value_or(0));
    outcome.shortfall = shortfallOf(mPlan, outcome);
    return outcome;
}

RecordOutcome record(const CameraSession& camera, const RecordPlan& plan,
                     const KeyPressed& keyPressed, const ShowProgress& show)
{
    const CancelFlag cancel;
    RecordRun run(camera, plan, keyPressed);
    std::optional<EndCause> cause = run.look();
    while (!cause && !cancel.isSet()) {
        show(run.progress().text());
        std::this_thread::sleep_for(kRecordPoll);
        cause = run.look();
    }
    const RecordingEnd end = finishRecording(camera, run.stop());
    return run.outcome(cause.value_or(EndCause::Stopped), end);
}

std::string RecordOutcome::text() const
{
    std::ostringstream text;
    text << "recorded " << countText(frames, "frame") << " of " << width << 'x' << height
         << " in the camera's memory\nended by " << textOf(cause).text;
    for (std::size_t i = 0; i < sequences.size(); ++i) {
        if (sequences[i].trigger) {
            text << (sequences.size() > 1 ? "\nsequence " + std::to_string(i) + ": " : "; ")
                 << "the trigger lies before frame " << *sequences[i].trigger << " of "
                 << sequences[i].frames;
        }
    }
    text << (end.flashCopied ? "\nthe recording is on the flash card, too" : "")
         << (end.inStandby ? "\nthe camera stays in record standby" : "") << '\n';
    return text.str();
}

std::string RecordOutcome::endText() const
{
    return std::string("the recording was ended by ") + textOf(cause).text +
           (end.inStandby ? ", the camera stays in record standby" : "") +
           (shortfall.empty() ? "" : ": " + shortfall);
}

Json RecordOutcome::json() const
{
    Json json{{"frames", frames},
              {"width", width},
              {"height", height},
              {"endedBy", textOf(cause).key},
              {"asAsked", shortfall.empty()},
              {"standby", end.inStandby},
              {"onFlashCard", end.flashCopied},
              {"sequences", Json::array()}};
    for (const RecordedSequence& sequence : sequences) {
        Json one{{"frames", sequence.frames}};
        if (sequence.trigger) {
            one["trigger"] = *sequence.trigger;
        }
        json["sequences"].push_back(one);
    }
    return json;
}

} // namespace telvo
