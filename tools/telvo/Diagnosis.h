#ifndef TELVO_TOOLS_TELVO_DIAGNOSIS_H
#define TELVO_TOOLS_TELVO_DIAGNOSIS_H

#include "CameraAddress.h"
#include "CameraLook.h"
#include "CameraSearch.h"
#include "StreamProbe.h"

#include <cstdint>
#include <string>
#include <vector>

namespace telvo
{

/// One thing that was looked at.
struct Finding {
    enum class Kind : std::uint8_t { Good, Hint, Problem };

    Kind kind = Kind::Good;
    std::string text;
    std::string advice{}; // what to do; empty for what is good
};

using Findings = std::vector<Finding>;

/// No camera answers: what may be in the way on these interfaces.
Findings diagnoseSilence(const Interfaces& interfaces);
/// Whether the camera that answered can be reached.
Findings diagnoseAddress(const gige::control::DiscoveredDevice& device);
/// What the camera says of itself: who controls it, what it waits for, its data rate and its link.
/// @param linkSpeed  of the camera in Mbit/s; 0: unknown
Findings diagnoseCamera(const CameraLook& look, std::int64_t linkSpeed);
/// @param cameraResends  whether the camera can send a packet again
Findings diagnoseResends(bool cameraResends);
/// What the system grants of the receive buffer that the stream asks for.
/// @param granted, asked  bytes
Findings diagnoseBuffer(std::size_t granted, std::size_t asked);
/// What the stream was like.
/// @param mtu  of the interface, bytes; 0: unknown
Findings diagnoseStream(const StreamProbe& probe, std::uint32_t mtu);

} // namespace telvo

#endif
