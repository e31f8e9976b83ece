#ifndef TELVO_TESTS_INTEGRATION_HOST_H
#define TELVO_TESTS_INTEGRATION_HOST_H

#include "TelvoDll.h"
#include "VirtualCamera.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

using namespace std::chrono_literals;

/// Options of a camera whose user sets are prepared, so that initialise returns 0.
camera::CameraOptions preparedCamera(const std::string& address = "127.0.0.11");

/// Settings with the use flag set: packets of 8000 bytes, no delays, the usual timeouts.
TelvoConnectionSettings fastSettings();
/// fastSettings() with short limits, so that incomplete frames are given up soon.
TelvoConnectionSettings impatientSettings();
/// Settings with the use flag clear: the library's defaults apply.
TelvoConnectionSettings defaultSettings();

/// One camera as a host program uses it, under an id of its own. Disconnects at the end.
class Host
{
  public:
    explicit Host(std::int32_t cameraId = 1) : mId(cameraId) {}
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    std::int32_t connect(const camera::VirtualCamera& camera,
                         const TelvoConnectionSettings& settings = fastSettings());
    std::int32_t initialize(const TelvoConnectionSettings& settings = fastSettings());
    std::int32_t disconnect();
    /// connect and initialize; both have to return 0.
    void open(const camera::VirtualCamera& camera,
              const TelvoConnectionSettings& settings = fastSettings());

    std::int32_t id() const { return mId; }
    /// The newest live image, copied; empty if there is none.
    std::vector<std::uint8_t> previewImage() const;
    /// Waits for a next image. @return empty: none came within 10 seconds
    std::vector<std::uint8_t> nextImage() const;

  private:
    std::int32_t mId;
};

/// Asks again and again until the condition holds. @return false: it did not within the time
bool eventually(const std::function<bool()>& condition, std::chrono::milliseconds limit = 10s);

/// Milliseconds that the call takes.
std::chrono::milliseconds timeOf(const std::function<void()>& call);

/// The value that a host wrote last to a feature; none if it never did.
std::optional<std::uint32_t> lastWritten(const camera::VirtualCamera& camera,
                                         camera::FeatureId feature);

/// The 32-bit frame number in a frame's header.
std::uint32_t frameNumber(const std::vector<std::uint8_t>& frame);

/// Whether every pixel behind the header is what the camera's scene shows in that frame.
bool showsScene(const std::vector<std::uint8_t>& frame, const camera::SceneView& view,
                std::uint32_t sequence = 0);

#endif
