/// Parameters of the link and of the receiving stream, and the windows that show them all.
#ifndef TELVO_SRC_FEATURES_STREAMPARAMETERS_H
#define TELVO_SRC_FEATURES_STREAMPARAMETERS_H

#include "CameraSettings.h"
#include "LogText.h"
#include "Outcome.h"

#include <cstdint>

/// A parameter, looked up anew on every access. Whether its owner takes or gives the value goes
/// unreported: hosts read it back.
struct ParameterAccess {
    enum class Owner { Camera, Link, Stream };

    Owner owner;
    const char* parameter;
    LogText<> failed;
    LogText<std::int32_t> done{};
};

inline constexpr ParameterAccess kGetPackageSize{ParameterAccess::Owner::Camera,
                                                 "GevSCPSPacketSize", "-- GEN getPackageSize Error",
                                                 "-- GEN getPackageSize %d"};
inline constexpr ParameterAccess kSetPackageSize{ParameterAccess::Owner::Camera,
                                                 "GevSCPSPacketSize", "-- GEN setPackageSize Error",
                                                 "-- GEN setPackageSize %d"};

Outcome write(CameraSettings& camera, const ParameterAccess& row, std::int32_t value);
/// A value that is not given leaves the host's alone; `before`, the host's, shows in the log line.
Reading<std::int32_t> read(CameraSettings& camera, const ParameterAccess& row, std::int32_t before);

/// @param name  the parameter whose name begins with it is meant
Outcome setStreamParameter(CameraSettings& camera, const char* name, std::int32_t value);
Reading<std::int32_t> getStreamParameter(CameraSettings& camera, const char* name,
                                         std::int32_t before);
/// Of the link and of the camera.
Outcome setHeartbeatTimeout(CameraSettings& camera, std::int32_t value);

void showGEVParams(CameraSettings& camera);
void showStreamParams(CameraSettings& camera);

#endif
