#ifndef TELVO_TOOLS_TELVO_CAMERALINK_H
#define TELVO_TOOLS_TELVO_CAMERALINK_H

#include "CameraAddress.h"

#include "TelvoDll.h"

#include <cstdint>

namespace telvo
{

/// What a command wants of a camera that copies a recording to its flash card.
enum class FlashCopy : std::uint8_t { IsInTheWay, IsTheTask };

/**
 * A camera that the library has connected and initialised, under an id of its own; disconnected at
 * the end. A camera whose user sets the library had to prepare is connected a second time.
 * Several at a time, on threads of their own, too.
 */
class CameraLink
{
  public:
    /// Throws Failure; Cancelled once the user has asked for the end.
    CameraLink(const CameraAddress& address, const TelvoConnectionSettings& settings,
               FlashCopy flashCopy = FlashCopy::IsInTheWay);
    ~CameraLink();
    CameraLink(const CameraLink&) = delete;
    CameraLink& operator=(const CameraLink&) = delete;

    /// What the library's functions take.
    std::int32_t id() const { return mId; }
    /// A recording was running and goes on.
    bool wasRecording() const { return mWasRecording; }
    bool isLost() const;

  private:
    void connect(const CameraAddress& address, const TelvoConnectionSettings& settings,
                 FlashCopy flashCopy) const;
    std::int32_t connectAndInitialize(const CameraAddress& address,
                                      const TelvoConnectionSettings& settings,
                                      FlashCopy flashCopy) const;

    std::int32_t mId;
    bool mWasRecording = false;
};

} // namespace telvo

#endif
