#include "StreamParameters.h"

#include "AsciiText.h"
#include "LinkPacing.h"
#include "PvWnd.h"
#include "Timing.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <variant>

namespace
{

using I32 = std::int32_t;

using Owner = ParameterAccess::Owner;

constexpr ParameterAccess kSetLinkHeartbeat{Owner::Link, "DefaultHeartbeatTimeout",
                                            "-- GEN setHeartbeatTimeout Error"};
constexpr ParameterAccess kSetCameraHeartbeat{Owner::Camera, "GevHeartbeatTimeout",
                                              "-- GEN setHeartbeatTimeout Error"};

using StoredSetting = std::atomic<I32> TransferSettings::*;
using Setter = Outcome (*)(CameraSettings&, I32);

Outcome setDelay(CameraSettings& camera, I32 value)
{
    return setInterPacketDelay(camera.link, value);
}

struct ReadableParameter {
    std::string_view name;
    std::variant<ParameterAccess, StoredSetting> source;
};

struct WritableParameter {
    std::string_view name;
    std::variant<ParameterAccess, Setter> target;
};

// The first name that a host's text selects is meant, so the order of the rows counts.
constexpr ReadableParameter kReadable[] = {
    {"GevSCPSPacketSize", kGetPackageSize},
    {"FirstPacketTimeout",
     ParameterAccess{Owner::Stream, "FirstPacketTimeout", "-- GEN getFirstPacketTimeout Error"}},
    {"PacketTimeout",
     ParameterAccess{Owner::Stream, "PacketTimeout", "-- GEN getPacketTimeout Error"}},
    {"RequestTimeout",
     ParameterAccess{Owner::Stream, "RequestTimeout", "-- GEN getRequestTimeout Error"}},
    {"DefaultImageTimeout",
     ParameterAccess{Owner::Stream, "DefaultImageTimeout", "-- GEN getDefaultImageTimeout Error"}},
    {"AnswerTimeout",
     ParameterAccess{Owner::Link, "AnswerTimeout", "-- GEN getAnswerTimeout Error"}},
    {"HeartbeatTimeout",
     ParameterAccess{Owner::Camera, "GevHeartbeatTimeout", "-- GEN getHeartbeatTimeout Error"}},
    {"HeartbeatInterval",
     ParameterAccess{Owner::Link, "HeartbeatInterval", "-- GEN getHeartbeatInterval Error"}},
    {"DefaultInterPacketDelay", &TransferSettings::defaultInterPacketDelay},
    {"OutputInterPacketDelay", &TransferSettings::outputInterPacketDelay},
    {"DefaultOutputDataRate", &TransferSettings::outputDataRate},
    {"MaximumPendingResends", ParameterAccess{Owner::Stream, "MaximumPendingResends",
                                              "-- GEN getMaximumPendingResends Error"}},
};

constexpr WritableParameter kWritable[] = {
    {"GevSCPSPacketSize", kSetPackageSize},
    {"FirstPacketTimeout",
     ParameterAccess{Owner::Stream, "FirstPacketTimeout", "-- GEN setFirstPacketTimeout Error"}},
    {"PacketTimeout",
     ParameterAccess{Owner::Stream, "PacketTimeout", "-- GEN setPacketTimeout Error"}},
    {"RequestTimeout",
     ParameterAccess{Owner::Stream, "RequestTimeout", "-- GEN setRequestTimeout Error"}},
    {"DefaultImageTimeout",
     ParameterAccess{Owner::Stream, "DefaultImageTimeout", "-- GEN setDefaultImageTimeout Error"}},
    {"AnswerTimeout",
     ParameterAccess{Owner::Link, "AnswerTimeout", "-- GEN setAnswerTimeout Error"}},
    {"HeartbeatTimeout", &setHeartbeatTimeout},
    {"HeartbeatInterval",
     ParameterAccess{Owner::Link, "HeartbeatInterval", "-- GEN setHeartbeatInterval Error"}},
    {"InterPacketDelay", &setDelay},
    {"MaximumPendingResends", ParameterAccess{Owner::Stream, "MaximumPendingResends",
                                              "-- GEN setMaximumPendingResends Error"}},
};

PvGenParameterArray* arrayOf(CameraLink& link, Owner owner)
{
    switch (owner) {
    case Owner::Link:
        return link.device.GetGenLink();
    case Owner::Stream:
        return link.stream.GetParameters();
    default:
        return link.device.GetGenParameters();
    }
}

/// @return null, after the accessor's line, when there is no such parameter; without a line when
/// the stream that would have it is closed
PvGenInteger* find(CameraLink& link, const ParameterAccess& row)
{
    if (row.owner == Owner::Stream && !link.stream.IsOpen()) {
        return nullptr;
    }
    auto* const parameter = findParameter<PvGenInteger>(arrayOf(link, row.owner), row.parameter);
    if (parameter == nullptr) {
        row.failed.log();
    }
    return parameter;
}

/// @return null when the host's text selects no row
template <typename Row, std::size_t Size>
const Row* selectRow(const Row (&rows)[Size], const char* name)
{
    const auto* const found =
        std::ranges::find_if(rows, [name](const Row& row) { return selects(name, row.name); });
    return found == std::end(rows) ? nullptr : found;
}

void showWindow(PvGenParameterArray* array)
{
    PvGenBrowserWnd window;
    window.SetGenParameterArray(array);
    (void)window.ShowModal();
    (void)window.Close();
}

} // namespace

Outcome write(CameraSettings& camera, const ParameterAccess& row, I32 value)
{
    PvGenInteger* const parameter = find(camera.link, row);
    if (parameter == nullptr) {
        return Outcome::Failed;
    }
    (void)parameter->SetValue(value);
    row.done.log(value);
    sleepFor(kParameterPause);
    return Outcome::Done;
}

Reading<I32> read(CameraSettings& camera, const ParameterAccess& row, I32 before)
{
    PvGenInteger* const parameter = find(camera.link, row);
    if (parameter == nullptr) {
        return {};
    }
    std::int64_t wide = 0;
    const I32 value = parameter->GetValue(wide).IsOK() ? static_cast<I32>(wide) : before;
    row.done.log(value);
    sleepFor(kParameterPause);
    return done(value);
}

Outcome setStreamParameter(CameraSettings& camera, const char* name, I32 value)
{
    logLine("setStreamParameter %s %d", name, value);
    const WritableParameter* const entry = selectRow(kWritable, name);
    if (entry == nullptr) {
        return Outcome::Failed;
    }
    if (const Setter* const setter = std::get_if<Setter>(&entry->target)) {
        return (*setter)(camera, value);
    }
    return write(camera, std::get<ParameterAccess>(entry->target), value);
}

Reading<I32> getStreamParameter(CameraSettings& camera, const char* name, I32 before)
{
    const ReadableParameter* const entry = selectRow(kReadable, name);
    if (entry == nullptr) {
        return {};
    }
    if (const StoredSetting* const setting = std::get_if<StoredSetting>(&entry->source)) {
        return done<I32>(camera.link.transfer.*(*setting));
    }
    return read(camera, std::get<ParameterAccess>(entry->source), before);
}

Outcome setHeartbeatTimeout(CameraSettings& camera, I32 value)
{
    // The host's end first: it must not give the camera up before the camera would give it up.
    const Outcome outcome = write(camera, kSetLinkHeartbeat, value);
    return outcome == Outcome::Done ? write(camera, kSetCameraHeartbeat, value) : outcome;
}

void showGEVParams(CameraSettings& camera)
{
    logLine("Show GEV Params Window.");
    showWindow(camera.link.device.GetGenParameters());
}

void showStreamParams(CameraSettings& camera)
{
    logLine("Show Stream Params Window.");
    showWindow(camera.link.stream.GetParameters());
}
