#ifndef TELVO_CAMERA_STREAMORDER_H
#define TELVO_CAMERA_STREAMORDER_H

#include "FrameStamp.h"
#include "Ipv4Address.h"
#include "RecordingInfo.h"
#include "Scene.h"

#include <array>
#include <cstdint>
#include <optional>

namespace camera
{

/// At power-on a camera sends like one behind a gigabit link, until its host knows better.
inline constexpr std::uint32_t kGigabitDelay = 12'000; // ns

/// Stream channel 0 as the host has set it up.
struct StreamChannel {
    gige::net::Endpoint destination{};   ///< port 0: closed
    std::uint32_t packetSize = 1440;     ///< bytes of the IP datagram
    std::uint32_t delay = kGigabitDelay; ///< nanoseconds between two packets (ticks of 1 GHz)
    bool dontFragment = false;
    bool extendedIds = false;

    [[nodiscard]] bool isOpen() const { return destination.port != 0; }
};

/// One block to send: all that determines its bytes, so that it can be made again for a resend.
struct StreamOrder {
    StreamChannel channel{};
    std::uint64_t blockId = 0;
    std::uint64_t timestamp = 0; ///< nanoseconds since power-on
    SceneView view{};
    std::uint32_t pixelFormat = 0;
    FrameStamp stamp{};
    /// Present: not an image of the scene but the info frame, zero behind its content.
    std::optional<std::array<std::uint8_t, kInfoFrameSize>> info{};
    std::uint32_t position = 0;       ///< place in the requested range; live: frame number
    std::uint64_t bytesPerSecond = 0; ///< ceiling, 0: none
    std::uint64_t leftOut = 0; ///< live images before this one for which the stream was too slow
};

} // namespace camera

#endif
