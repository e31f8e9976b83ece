#ifndef TELVO_CAMERA_CONTROLPRIVILEGE_H
#define TELVO_CAMERA_CONTROLPRIVILEGE_H

#include "FrameClock.h"
#include "GvcpStatus.h"
#include "Ipv4Address.h"

#include <cstdint>
#include <optional>

namespace camera
{

/// Who controls the camera. The host that writes the privilege register first, known by address and
/// port, holds it until it writes 0 or stays silent for too long. Not thread-safe.
class ControlPrivilege
{
  public:
    using Endpoint = gige::net::Endpoint;

    /// The register's value: 0 open, 1 exclusive, 2 control.
    [[nodiscard]] std::uint32_t value() const { return mValue; }
    [[nodiscard]] std::optional<Endpoint> owner() const { return mOwner; }

    /// A write to the privilege register. AccessDenied while another host holds it.
    gige::wire::GvcpStatus write(std::uint32_t value, const Endpoint& from, CameraTime now);
    void release();

    [[nodiscard]] bool mayRead(const Endpoint& from) const;
    [[nodiscard]] bool mayWrite(const Endpoint& from) const { return mOwner == from; }

    /// A valid command came: if from the owner, its silence begins anew.
    void heard(const Endpoint& from, CameraTime now);
    [[nodiscard]] bool isExpired(CameraTime now, CameraTime timeout) const;

  private:
    std::uint32_t mValue = 0;
    std::optional<Endpoint> mOwner;
    CameraTime mLastHeard{0};
};

} // namespace camera

#endif
