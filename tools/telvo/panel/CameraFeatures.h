#ifndef TELVO_TOOLS_TELVO_PANEL_CAMERAFEATURES_H
#define TELVO_TOOLS_TELVO_PANEL_CAMERAFEATURES_H

#include "CameraAddress.h"
#include "Json.h"

#include <memory>
#include <string>

class DeviceSession;

namespace telvo
{

/// All features that a camera describes, over a connection of its own, which lasts as long as the
/// object. The library may not have the camera meanwhile.
class CameraFeatures
{
  public:
    enum class Access : std::uint8_t { Look, Change };

    /// Throws Failure.
    CameraFeatures(const CameraAddress& address, Access access);
    ~CameraFeatures();
    CameraFeatures(const CameraFeatures&) = delete;
    CameraFeatures& operator=(const CameraFeatures&) = delete;

    /// Categories within categories, with the features' present values.
    Json tree() const;
    /// Writes a value, given as text. @return the feature as it is then. Throws Failure where there
    /// is none of this name, it does not take the value, or the camera refuses.
    Json set(const std::string& name, const std::string& value) const;

  private:
    std::shared_ptr<DeviceSession> mDevice;
};

} // namespace telvo

#endif
