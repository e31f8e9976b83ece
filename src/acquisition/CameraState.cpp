// What the camera says it is doing.
#include "CQuorGrabber.h"

#include <array>
#include <optional>
#include <string_view>

namespace
{

struct StateName {
    std::string_view name;
    CameraState state;
};

constexpr std::array<StateName, 4> kStateNames{{
    {"Idle", CameraState::Idle},
    {"Live", CameraState::Live},
    {"Recording", CameraState::Recording},
    {"FlashWrite", CameraState::FlashWrite},
}};

CameraState stateOf(std::string_view name)
{
    for (const StateName& known : kStateNames) {
        if (known.name == name) {
            return known.state;
        }
    }
    return CameraState::Unknown;
}

PvGenEnum* stateFeature(const CameraFeatures& features)
{
    // Connect and initialise ask before the handles are bound.
    return features->cameraState != nullptr ? features->cameraState
                                            : features.find<PvGenEnum>("CameraState");
}

/// Nothing when the read fails; Unknown for a name that is not in the table.
std::optional<CameraState> readState(const CameraFeatures& features)
{
    PvGenEnum* const feature = stateFeature(features);
    PvString name;
    if (feature == nullptr || !feature->GetValue(name).IsOK()) {
        return std::nullopt;
    }
    return stateOf(name.GetAscii());
}

} // namespace

bool CQuorGrabber::hasCameraState() const
{
    return stateFeature(mFeatures) != nullptr;
}

std::int32_t CQuorGrabber::getCameraState(std::int32_t* state)
{
    const CameraState read = readState(mFeatures).value_or(CameraState::Unknown);
    *state = static_cast<std::int32_t>(read);
    return read == CameraState::Unknown ? kFailure : kSuccess;
}

std::int32_t CQuorGrabber::isStateIdle(std::uint8_t* idle)
{
    if (!isConnected()) {
        *idle = 0;
        return kSuccess;
    }
    const std::optional<CameraState> state = readState(mFeatures);
    if (!state) {
        return kFailure;
    }
    // A camera in record mode that has finished recording falls back to streaming.
    const bool hasRecorded = mMode.current == Mode::Record && state == CameraState::Live;
    *idle = state == CameraState::Idle || hasRecorded ? 1 : 0;
    return kSuccess;
}

std::int32_t CQuorGrabber::isStateFlashWrite(std::uint8_t* flashWrite)
{
    if (mIsConnectionLost || !isConnected()) {
        *flashWrite = 0;
        return kSuccess;
    }
    const std::optional<CameraState> state = readState(mFeatures);
    if (!state) {
        return kFailure;
    }
    *flashWrite = state == CameraState::FlashWrite ? 1 : 0;
    return kSuccess;
}

std::int32_t CQuorGrabber::isTrailerRecordingActive(std::uint8_t* active)
{
    *active = 0;
    if (mIsConnectionLost || !isConnected()) {
        return kSuccess;
    }
    PvGenBoolean* const feature = mFeatures->recordTrailerRecordingActive;
    bool value = false;
    if (feature == nullptr || !feature->GetValue(value).IsOK()) {
        return kFailure;
    }
    *active = value ? 1 : 0;
    return kSuccess;
}
