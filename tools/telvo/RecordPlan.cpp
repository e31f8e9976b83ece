#include "RecordPlan.h"

#include "CountText.h"
#include "ToolError.h"

#include "TelvoDll.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>

namespace telvo
{

namespace
{

constexpr std::uint32_t kMost = std::numeric_limits<std::uint32_t>::max();
constexpr double kLongestTime = 31'536'000; // seconds: a year

Assignment assign(std::string_view setting, std::string_view text)
{
    return makeAssignment(findSetting(setting), text);
}

/// "200" or "40%" as frames of so many.
std::uint32_t framesOf(const std::string& text, std::uint32_t room)
{
    std::uint32_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    const std::string_view unit(rest, end);
    if (error != std::errc{} || (!unit.empty() && unit != "%") || (unit == "%" && value > 100)) {
        throw UsageError("'" + text + "' is neither a number of frames nor a share such as 40%");
    }
    return unit.empty() ? value : static_cast<std::uint32_t>(std::uint64_t{room} * value / 100);
}

bool wantsRing(const RecordOptions& options)
{
    return options.mode == "ring" || options.trigger == "window" || options.trigger == "key" ||
           !options.pre.empty() || !options.post.empty() || options.sequences.value_or(1) > 1;
}

void addMode(const RecordOptions& options, std::vector<Assignment>& settings)
{
    if (wantsRing(options) || options.mode == "single") {
        settings.push_back(assign("record-mode", wantsRing(options) ? "continuous" : "single"));
    }
    if (options.sequences) {
        settings.push_back(assign("record-sequences", std::to_string(*options.sequences)));
    }
}

/// A trigger that the camera lacks is off anyway.
void addSwitch(const CameraSession& camera, std::string_view trigger, bool on,
               std::vector<Assignment>& settings)
{
    if (on || camera.read(findSetting(trigger))) {
        settings.push_back(assign(trigger, on ? "on" : "off"));
    }
}

void addTrigger(const CameraSession& camera, const RecordOptions& options,
                std::vector<Assignment>& settings)
{
    if (options.trigger.empty()) {
        return; // as the camera is set
    }
    addSwitch(camera, "external-trigger", options.trigger == "external", settings);
    addSwitch(camera, "window-trigger", options.trigger == "window", settings);
}

void addWindow(const RecordOptions& options, std::vector<Assignment>& settings)
{
    if (!options.window.empty()) {
        const auto parts = rectangleOf(options.window);
        settings.push_back(assign("window-left", parts[0]));
        settings.push_back(assign("window-top", parts[1]));
        settings.push_back(assign("window-width", parts[2]));
        settings.push_back(assign("window-height", parts[3]));
    }
    if (!options.threshold.empty()) {
        settings.push_back(assign("window-threshold", options.threshold));
    }
    if (!options.condition.empty()) {
        settings.push_back(assign("window-condition", options.condition));
    }
}

std::uint32_t roomOf(const CameraSession& camera)
{
    std::uint32_t room = 0;
    if (expGetMaxFramesPerSequence(&room, camera.id()) != 0 || room == 0) {
        throw Failure("the camera does not tell how many frames fit its memory, so give --post in "
                      "frames");
    }
    return room;
}

/// Frames after the trigger, as the options ask for; none: they leave it to the camera's setting.
std::optional<std::uint32_t> trailerOf(const CameraSession& camera, const RecordOptions& options)
{
    if (options.pre.empty() && options.post.empty()) {
        return std::nullopt;
    }
    const bool isInFrames = options.pre.empty() && options.post.back() != '%';
    const std::uint32_t room = isInFrames ? kMost : roomOf(camera);
    const std::uint32_t pre = options.pre.empty() ? 0 : framesOf(options.pre, room);
    const std::uint32_t post =
        options.post.empty() ? room - std::min(pre, room) : framesOf(options.post, room);
    if (pre > room || post > room - pre) {
        throw Failure("--pre and --post are more than the " + countText(room, "frame") +
                      " of this size that a sequence holds; ask for fewer");
    }
    return post;
}

bool isOn(const CameraSession& camera, std::string_view setting)
{
    const auto text = camera.read(findSetting(setting));
    return text && text->value == "on";
}

bool isRing(const CameraSession& camera)
{
    const auto mode = camera.read(findSetting("record-mode"));
    return mode && mode->value == "continuous";
}

TriggerKind triggerOf(const CameraSession& camera, const RecordOptions& options, bool ring)
{
    if (options.trigger == "key") {
        return TriggerKind::Key;
    }
    return isOn(camera, "external-trigger") || (ring && isOn(camera, "window-trigger"))
               ? TriggerKind::Camera
               : TriggerKind::None;
}

/// What the camera itself counts; a key's trailer the host counts.
void setTrailer(const CameraSession& camera, RecordPlan& plan, std::optional<std::uint32_t> trailer)
{
    if (trailer && plan.trigger != TriggerKind::Key) {
        camera.apply({assign("trailer", std::to_string(*trailer))});
    }
    if (!trailer) {
        const auto kept = camera.read(findSetting("trailer"));
        trailer = kept ? framesOf(kept->value, 0) : 0;
    }
    plan.trailer = *trailer;
}

void requireRoom(const CameraSession& camera, const RecordPlan& plan)
{
    std::uint32_t room = 0;
    if (plan.frames && expGetMaxFramesPerSequence(&room, camera.id()) == 0 && *plan.frames > room) {
        throw Failure("the camera's memory takes only " + countText(room, "frame") +
                      " of this size; ask for fewer, or for smaller pictures");
    }
}

void addTriggerOptions(const Command& command, RecordOptions& options)
{
    command.option("--pre", options.pre, "Frames to keep from before the trigger").type("N|N%");
    command.option("--post", options.post, "Frames to record after the trigger").type("N|N%");
    command
        .option("--trigger", options.trigger,
                "What the recording waits for: none, external (the camera's input), window "
                "(what the pictures show), key (any key) [as the camera is set]")
        .type("KIND")
        .oneOf({"none", "external", "window", "key"});
    command.option("--window", options.window, "Window of the picture that is watched")
        .type("X,Y,W,H");
    command.option("--threshold", options.threshold, "Grey value at which the window triggers")
        .type("VALUE");
    command
        .option("--condition", options.condition,
                "When the window triggers, by the camera's number")
        .type("NUMBER");
}

} // namespace

void RecordOptions::addTo(const Command& command)
{
    command.option("--frames", frames, "End after so many frames").type("N").within(1U, kMost);
    command.option("--seconds", seconds, "End after this time").type("S").within(0.0, kLongestTime);
    command
        .option("--mode", mode,
                "single: until the memory is full; ring: over and over until the trigger [as "
                "the camera is set]")
        .type("single|ring")
        .oneOf({"single", "ring"});
    command.option("--sequences", sequences, "Sequences of a ring, a trigger each")
        .type("N")
        .oneOf({"1", "2", "4", "8", "16"});
    addTriggerOptions(command, *this);
    capture.addTo(command, {"width", "height", "frame-rate", "exposure", "gain"});
}

void RecordOptions::check() const
{
    if (wantsRing(*this) && mode == "single") {
        throw UsageError("--sequences, --pre, --post and the triggers window and key are for "
                         "--mode ring");
    }
    if (trigger != "window" && !(window + threshold + condition).empty()) {
        throw UsageError("--window, --threshold and --condition are for --trigger window");
    }
    for (const std::string& share : {pre, post}) {
        if (!share.empty()) {
            framesOf(share, 0);
        }
    }
    if (!window.empty()) {
        rectangleOf(window);
    }
}

RecordPlan arm(const CameraSession& camera, const RecordOptions& options)
{
    std::vector<Assignment> settings = options.capture.assignments();
    addMode(options, settings);
    addTrigger(camera, options, settings);
    addWindow(options, settings);
    camera.apply(settings);
    // The library waits for a copy to the flash card only if it has been asked about it before.
    isOn(camera, "flash-after-record");

    RecordPlan plan{.isRing = isRing(camera), .frames = options.frames};
    plan.trigger = triggerOf(camera, options, plan.isRing);
    if (options.seconds) {
        plan.time = std::chrono::duration<double>(*options.seconds);
    }
    setTrailer(camera, plan, trailerOf(camera, options));
    requireRoom(camera, plan);
    return plan;
}

} // namespace telvo
