#ifndef TELVO_TOOLS_TELVO_CAMERASESSION_H
#define TELVO_TOOLS_TELVO_CAMERASESSION_H

#include "CameraAddress.h"
#include "CameraLink.h"
#include "CameraLook.h"
#include "SettingLook.h"
#include "SettingWriter.h"

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace telvo
{

/// What of a camera a command works with, over the library. In a shell the connection stays for the
/// commands that follow, else it ends with the object.
class CameraSession
{
  public:
    /**
     * Looks at the camera, tells the user if its user sets have to be prepared, then connects.
     * Throws Failure: a host has the camera, it lacks what the library cannot do without, or it
     * cannot be connected.
     * @param settings  those of the connection hold for it, in place of the usual values
     */
    explicit CameraSession(const CameraAddress& address,
                           const std::vector<Assignment>& settings = {},
                           FlashCopy flashCopy = FlashCopy::IsInTheWay);
    ~CameraSession();
    CameraSession(const CameraSession&) = delete;
    CameraSession& operator=(const CameraSession&) = delete;

    /// What the library's functions take.
    std::int32_t id() const;
    const CameraAddress& address() const;

    /// What the user was told about the camera's user sets; empty: they were prepared before.
    const std::string& preparation() const;

    /// A recording was running and goes on.
    bool isRecording() const;

    /// Throws Failure if a recording is running, which the caller would end.
    void requireNoRecording() const;

    /// Throws Failure, naming the first of these features that the camera lacks.
    /// @param what  what the camera cannot do then: "record"
    void requireFeatures(std::initializer_list<const char*> features, const char* what) const;

    /// Writes those that the camera keeps, in an order in which it takes them, and tells the user
    /// which it takes differently. Throws Failure for one that it refuses.
    void apply(const std::vector<Assignment>& settings) const;

    /// The same, for the caller to tell; those of the connection too.
    std::vector<SettingOutcome> write(const std::vector<Assignment>& settings) const;

    /// A setting with its unit, as the library reads it; none if the camera lacks it.
    std::optional<SettingText> read(const Setting& setting) const;

    /// One of the library's identity texts, by its key ("model"); empty if there is none.
    std::string identity(const char* key) const;

    /// Whether the link to the camera was lost.
    bool isLost() const;

    /// Throws Failure once the link to the camera is lost.
    void requireLink() const;

    /// Throws Failure: the link is lost, if that is why something went wrong, else for this reason.
    /// A camera that fell silent is waited for meanwhile: the link counts as lost only after some
    /// heartbeats without an answer.
    [[noreturn]] void fail(const std::string& reason) const;

    /// A camera that is kept connected, whatever its settings; null: it is not.
    static std::unique_ptr<CameraSession> kept(const CameraAddress& address);

    struct Connected;

  private:
    explicit CameraSession(std::shared_ptr<Connected> connected);

    std::shared_ptr<Connected> mConnected; // never null
};

/// A look at the camera. A connection that is kept is given up for it: with that, nobody else may
/// look. Throws Failure.
CameraLook lookAt(const CameraAddress& address);

/// While it lives, connections stay for the commands that follow. One at a time.
class KeptCameras
{
  public:
    KeptCameras();
    ~KeptCameras();
    KeptCameras(const KeptCameras&) = delete;
    KeptCameras& operator=(const KeptCameras&) = delete;
};

} // namespace telvo

#endif
