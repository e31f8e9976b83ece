#ifndef TELVO_TOOLS_TELVO_RECORDRUN_H
#define TELVO_TOOLS_TELVO_RECORDRUN_H

#include "CameraSession.h"
#include "Json.h"
#include "RecordPlan.h"
#include "RecordingEnd.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace telvo
{

/// Why a recording ended.
enum class EndCause : std::uint8_t { Trigger, Full, Frames, Time, Key, Stopped };

/// A recorded sequence.
struct RecordedSequence {
    std::uint32_t frames = 0;
    std::optional<std::uint32_t> trigger; // the first frame after it; may be behind the last
};

struct RecordOutcome {
    EndCause cause = EndCause::Stopped;
    RecordingEnd end{};
    std::uint32_t frames = 0; // of all sequences
    std::uint32_t width = 0;  // pixels
    std::uint32_t height = 0; // pixels
    std::vector<RecordedSequence> sequences{};
    std::string shortfall{}; // what was asked for and did not come about; may be empty

    std::string text() const;
    Json json() const;
};

/// The user's key, seen by all recordings that run.
using KeyPressed = std::function<bool()>;
/// Takes one short text on how it goes.
using ShowProgress = std::function<void(const std::string&)>;

/// Starts the camera's recording, waits for its end as planned, and ends it. Throws Failure.
RecordOutcome record(const CameraSession& camera, const RecordPlan& plan,
                     const KeyPressed& keyPressed, const ShowProgress& show);

} // namespace telvo

#endif
