/// How a recording is to be taken: what the command line asks for, and what becomes of it at a
/// camera.
#ifndef TELVO_TOOLS_TELVO_RECORDPLAN_H
#define TELVO_TOOLS_TELVO_RECORDPLAN_H

#include "CameraSession.h"
#include "CaptureOptions.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace telvo
{

/// As given; texts are empty and numbers none where nothing was.
struct RecordOptions {
    CaptureOptions capture;
    std::optional<std::uint32_t> frames;
    std::optional<double> seconds;
    std::string mode; // "single", "ring"
    std::optional<std::uint32_t> sequences;
    std::string pre;       // frames, or a share of a sequence: "200", "40%"
    std::string post;      // likewise
    std::string trigger;   // "none", "external", "window", "key"
    std::string window;    // "x,y,w,h"
    std::string threshold; // grey value
    std::string condition; // the camera's number

    void addTo(const Command& command);
    /// Throws UsageError for what makes no sense together.
    void check() const;
};

enum class TriggerKind : std::uint8_t { None, Camera, Key };

/// What ends a recording, besides the camera itself and the user.
struct RecordPlan {
    bool isRing = false;
    TriggerKind trigger = TriggerKind::None; // waited for
    std::uint32_t trailer = 0;               // frames after the trigger
    std::optional<std::uint32_t> frames{};   // an end without a trigger; with one, the least wanted
    std::optional<std::chrono::duration<double>> time{};

    /// Whether the recording is to go on until the user ends it.
    bool isOpen() const { return isRing && trigger == TriggerKind::None && !frames && !time; }
};

/// Writes the settings into the camera. Throws Failure.
RecordPlan arm(const CameraSession& camera, const RecordOptions& options);

} // namespace telvo

#endif
