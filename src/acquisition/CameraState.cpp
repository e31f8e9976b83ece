#include "CameraState.h"

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

} // namespace

bool hasCameraState(const CameraFeatures& features)
{
    return stateFeature(features) != nullptr;
}

std::optional<CameraState> readCameraState(const CameraFeatures& features)
{
    PvGenEnum* const feature = stateFeature(features);
    PvString name;
    if (feature == nullptr || !feature->GetValue(name).IsOK()) {
        return std::nullopt;
    }
    return stateOf(name.GetAscii());
}
