// Parameters of the link and of the receiving stream, and the windows that show them all.

#include "AsciiText.h"
#include "CQuorGrabber.h"
#include "LogText.h"
#include "PvWnd.h"
#include "Timing.h"

#include <algorithm>
#include <string_view>
#include <variant>

namespace
{

using I32 = std::int32_t;

/// Where a parameter lives.
enum class Owner { Camera, Link, Stream };

struct ParameterAccess {
    Owner owner;
    const char* parameter;
    LogText<> failed;
    LogText<I32> done{};
};

constexpr ParameterAccess kGetPackageSize{
    Owner::Camera, "GevSCPSPacketSize", "-- GEN getPackageSize Error", "-- GEN getPackageSize %d"};
constexpr ParameterAccess kSetPackageSize{
    Owner::Camera, "GevSCPSPacketSize", "-- GEN setPackageSize Error", "-- GEN setPackageSize %d"};
constexpr ParameterAccess kSetLinkHeartbeat{Owner::Link, "DefaultHeartbeatTimeout",
                                            "-- GEN setHeartbeatTimeout Error"};
constexpr ParameterAccess kSetCameraHeartbeat{Owner::Camera, "GevHeartbeatTimeout",
                                              "-- GEN setHeartbeatTimeout Error"};

using StoredSetting = std::atomic<I32> TransferSettings::*;
using Setter = I32 (CQuorGrabber::*)(I32);

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
    {"HeartbeatTimeout", &CQuorGrabber::setHeartbeatTimeout},
    {"HeartbeatInterval",
     ParameterAccess{Owner::Link, "HeartbeatInterval", "-- GEN setHeartbeatInterval Error"}},
    {"InterPacketDelay", &CQuorGrabber::setInterPacketDelay},
    {"MaximumPendingResends", ParameterAccess{Owner::Stream, "MaximumPendingResends",
                                              "-- GEN setMaximumPendingResends Error"}},
};

/// The two ends of a connection, whose parameters are looked up anew on every call.
struct Ends {
    PvDevice& device;
    PvStream& stream;

    /// @return null, after the accessor's line, when there is no such parameter; without a line
    /// when the stream that would have it is closed
    PvGenInteger* find(const ParameterAccess& row) const
    {
        if (row.owner == Owner::Stream && !stream.IsOpen()) {
            return nullptr;
        }
        auto* const parameter = findParameter<PvGenInteger>(array(row.owner), row.parameter);
        if (parameter == nullptr) {
            row.failed.log();
        }
        return parameter;
    }

    PvGenParameterArray* array(Owner owner) const
    {
        switch (owner) {
        case Owner::Link:
            return device.GetGenLink();
        case Owner::Stream:
            return stream.GetParameters();
        default:
            return device.GetGenParameters();
        }
    }
};

// Whether the camera or the stream takes or gives the value goes unreported: hosts read it back.

I32 runParameterRead(const ParameterAccess& row, Ends ends, I32* value)
{
    PvGenInteger* const parameter = ends.find(row);
    if (parameter == nullptr) {
        return kFailure;
    }
    std::int64_t wide = 0;
    if (parameter->GetValue(wide).IsOK()) {
        *value = static_cast<I32>(wide);
    }
    row.done.log(*value);
    sleepFor(kParameterPause);
    return kSuccess;
}

I32 runParameterWrite(const ParameterAccess& row, Ends ends, I32 value)
{
    PvGenInteger* const parameter = ends.find(row);
    if (parameter == nullptr) {
        return kFailure;
    }
    (void)parameter->SetValue(value);
    row.done.log(value);
    sleepFor(kParameterPause);
    return kSuccess;
}

void showWindow(PvGenParameterArray* array)
{
    PvGenBrowserWnd window;
    window.SetGenParameterArray(array);
    (void)window.ShowModal();
    (void)window.Close();
}

} // namespace

std::int32_t CQuorGrabber::setStreamParameter(const char* name, std::int32_t value)
{
    logLine("setStreamParameter %s %d", name, value);
    const auto* const entry = std::ranges::find_if(
        kWritable, [name](const WritableParameter& row) { return selects(name, row.name); });
    if (entry == std::end(kWritable)) {
        return kFailure;
    }
    if (const Setter* const setter = std::get_if<Setter>(&entry->target)) {
        return (this->*(*setter))(value);
    }
    return runParameterWrite(std::get<ParameterAccess>(entry->target), {mDevice, mStream}, value);
}

std::int32_t CQuorGrabber::getStreamParameter(const char* name, std::int32_t* value)
{
    const auto* const entry = std::ranges::find_if(
        kReadable, [name](const ReadableParameter& row) { return selects(name, row.name); });
    if (entry == std::end(kReadable)) {
        return kFailure;
    }
    if (const StoredSetting* const setting = std::get_if<StoredSetting>(&entry->source)) {
        *value = mTransfer.*(*setting);
        return kSuccess;
    }
    return runParameterRead(std::get<ParameterAccess>(entry->source), {mDevice, mStream}, value);
}

std::int32_t CQuorGrabber::setPackageSize(std::int32_t value)
{
    return runParameterWrite(kSetPackageSize, {mDevice, mStream}, value);
}

std::int32_t CQuorGrabber::getPackageSize(std::int32_t* value)
{
    return runParameterRead(kGetPackageSize, {mDevice, mStream}, value);
}

std::int32_t CQuorGrabber::setHeartbeatTimeout(std::int32_t value)
{
    // The host's end first: it must not give the camera up before the camera would give it up.
    const std::int32_t result = runParameterWrite(kSetLinkHeartbeat, {mDevice, mStream}, value);
    return result == kSuccess ? runParameterWrite(kSetCameraHeartbeat, {mDevice, mStream}, value)
                              : result;
}

std::int32_t CQuorGrabber::showGEVParams()
{
    logLine("Show GEV Params Window.");
    showWindow(mDevice.GetGenParameters());
    return kSuccess;
}

std::int32_t CQuorGrabber::showStreamParams()
{
    logLine("Show Stream Params Window.");
    showWindow(mStream.GetParameters());
    return kSuccess;
}
