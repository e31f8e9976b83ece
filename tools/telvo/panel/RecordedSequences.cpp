#include "RecordedSequences.h"

#include "CountText.h"
#include "FrameSource.h"
#include "ToolError.h"
#include "TriggerSearch.h"

#include "TelvoDll.h"

#include <string>

namespace telvo
{

namespace
{

constexpr double kTicksPerSecond = 1e6; // of a frame's time

} // namespace

RecordedSequences::RecordedSequences(const CameraSession& camera, const RecordingInfo& info,
                                     std::optional<std::uint16_t> givenTrigger)
    : mCamera(camera), mInfo(info), mGivenTrigger(givenTrigger)
{
    expGetNumberOfAllRecordedFrames(&mFrames, camera.id());
}

const Recording& RecordedSequences::select(std::uint32_t sequence)
{
    if (!mSelected || mSelected->sequence != sequence) {
        mSelected = selectSequence(mCamera, mInfo, sequence);
    }
    return *mSelected;
}

GrayImage RecordedSequences::read(FramePlace place)
{
    const Recording& recording = select(place.sequence);
    if (place.frame >= recording.frames) {
        throw Failure("sequence " + std::to_string(place.sequence) + " has " +
                      countText(recording.frames, "frame") + ", numbered from 0");
    }
    return GrayImage({mInfo.width, mInfo.height, readFrame(mCamera, mInfo, place.frame)});
}

Json RecordedSequences::json()
{
    Json rows = Json::array();
    for (std::uint32_t sequence = 0; sequence < mInfo.sequences; ++sequence) {
        rows.push_back(rowOf(sequence));
    }
    return rows;
}

Json RecordedSequences::rowOf(std::uint32_t sequence)
{
    const Facts& facts = factsOf(sequence);
    const std::uint32_t frames = select(sequence).frames;
    Json row{{"sequence", sequence},
             {"frames", frames},
             {"first", 0},
             {"last", frames == 0 ? 0 : frames - 1},
             {"width", mInfo.width},
             {"height", mInfo.height},
             {"trigger", facts.trigger ? Json(*facts.trigger) : Json()}};
    if (facts.isTriggerApproximate) {
        row["isTriggerApproximate"] = true;
    }
    if (!facts.first) {
        return row;
    }
    if (isTimeOfDay(*facts.first)) {
        row["start"] = timeOfDay(facts.first->time);
    } else if (facts.last->time > facts.first->time) {
        const auto span = static_cast<double>(facts.last->time - facts.first->time);
        row["seconds"] = span / kTicksPerSecond;
        row["fps"] = (frames - 1) * kTicksPerSecond / span;
    }
    return row;
}

const RecordedSequences::Facts& RecordedSequences::factsOf(std::uint32_t sequence)
{
    const auto known = mFacts.find(sequence);
    if (known != mFacts.end()) {
        return known->second;
    }
    Facts facts;
    const std::uint32_t frames = select(sequence).frames;
    if (frames > 0) {
        facts.first = headerOf(0);
        facts.last = headerOf(frames - 1);
        findTriggerOf(sequence, facts);
    }
    return mFacts.emplace(sequence, facts).first->second;
}

/// Of the selected sequence. A trigger of the user's ends the recording in its first one.
void RecordedSequences::findTriggerOf(std::uint32_t sequence, Facts& facts)
{
    const std::uint32_t frames = mSelected->frames;
    facts.trigger = findTrigger(frames, [this](std::uint32_t frame) { return headerOf(frame); });
    if (!facts.trigger && mGivenTrigger && sequence == 0) {
        facts.trigger = findGivenTrigger(*mGivenTrigger, facts.last->counter, frames);
        facts.isTriggerApproximate = facts.trigger.has_value();
    }
    if (facts.trigger && *facts.trigger < frames) {
        facts.triggerHeader = headerOf(*facts.trigger);
    }
}

/// Of the selected sequence.
FrameHeader RecordedSequences::headerOf(std::uint32_t frame)
{
    return decodeFrameHeader(readFrame(mCamera, mInfo, frame));
}

Json RecordedSequences::triggerOf(std::uint32_t sequence, const FrameHeader& header)
{
    const Facts& facts = factsOf(sequence);
    if (!facts.triggerHeader || isTimeOfDay(header)) {
        return Json::object();
    }
    Json json{{"timeFromTrigger", static_cast<std::int64_t>(header.time) -
                                      static_cast<std::int64_t>(facts.triggerHeader->time)}};
    if (facts.isTriggerApproximate) {
        json["isTriggerApproximate"] = true;
    }
    return json;
}

} // namespace telvo
