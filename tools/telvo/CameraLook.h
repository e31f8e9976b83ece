#ifndef TELVO_TOOLS_TELVO_CAMERALOOK_H
#define TELVO_TOOLS_TELVO_CAMERALOOK_H

#include "CameraAddress.h"

#include "Feature.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

class DeviceSession;

namespace telvo
{

/**
 * A look at a camera that leaves it as it is: its features are read through the stack, without
 * control of the camera, so that nothing can be written. A host that controls the camera is not
 * disturbed; one that wants it for itself alone lets nobody look.
 */
class CameraLook
{
  public:
    /// Throws Failure: the camera does not answer, or a host has it for itself alone.
    explicit CameraLook(const CameraAddress& address);
    ~CameraLook();
    CameraLook(const CameraLook&) = delete;
    CameraLook& operator=(const CameraLook&) = delete;

    /// The names of all features.
    std::set<std::string, std::less<>> features() const;
    /// None: the camera has no feature of this name.
    std::unique_ptr<gige::ui::Feature> find(std::string_view feature) const;

    // Values; none: the camera lacks the feature, it cannot be read, or is of another kind.
    std::optional<std::int64_t> integer(std::string_view feature) const;
    std::optional<bool> flag(std::string_view feature) const;
    /// Also an enumeration's present entry.
    std::optional<std::string> text(std::string_view feature) const;

    /// Whether the camera sends packets again that it is asked for.
    bool resendsPackets() const;
    /// Mbit/s, as the camera tells; 0: it does not.
    std::int64_t linkSpeed() const;

    /// The host that controls the camera, "10.0.0.1, port 50123"; empty text: the camera does not
    /// tell which. None: nobody does.
    std::optional<std::string> controllingHost() const;

  private:
    std::shared_ptr<DeviceSession> mDevice;
};

/// Why there can be no look at this camera, or control of it: "… is controlled by …; …".
std::string heldByOther(const CameraAddress& address, const std::string& host);

} // namespace telvo

#endif
