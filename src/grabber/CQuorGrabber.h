#ifndef TELVO_SRC_GRABBER_CQUORGRABBER_H
#define TELVO_SRC_GRABBER_CQUORGRABBER_H

#include "CameraLink.h"
#include "CameraModel.h"
#include "CameraSettings.h"
#include "Identity.h"
#include "ModeControl.h"
#include "RecordedFrames.h"
#include "SingleImageBuffer.h"
#include "TelvoDll.h"

#include <atomic>
#include <cstdint>
#include <memory>

class LinkLossSink;

enum class [[nodiscard]] ConnectResult : std::int32_t{
    Connected = 0, Failed = -1,
    InFlashWrite = 1, ///< connected, and the camera is copying to its flash card
};

enum class [[nodiscard]] InitializeResult : std::int32_t{
    Ready = 0,
    Failed = -1,             ///< link lost
    UserSetPrepared = -2,    ///< the host has to connect once more
    AttachedToRecording = 1, ///< which was under way
};

/**
 * One camera, from connect to disconnect: its link, its settings, what it does for the host, and
 * who it is.
 *
 * Threads: the host's calls the operations, one at a time; the stack's calls noteLinkLost(). The
 * worker threads use the members that they were given, never this object.
 */
class CQuorGrabber
{
  public:
    CQuorGrabber();
    /// Disconnects: ends the worker threads, closes the stream, writes a changed user-defined name
    /// to the camera and gives the device up, unless the link was lost before.
    ~CQuorGrabber();
    CQuorGrabber(const CQuorGrabber&) = delete;
    CQuorGrabber& operator=(const CQuorGrabber&) = delete;

    // Connection.cpp
    ConnectResult connect(const char* macAddress, const char* ipAddress, bool ipConfigurationValid,
                          const TelvoConnectionSettings& settings);
    // Initialization.cpp
    InitializeResult initialize(const TelvoConnectionSettings& settings);

    void setChangedCallback(TelvoChangedCallback callback) { mChangedCallback = callback; }
    void setDataAvailableCallback(TelvoDataAvailableCallback callback)
    {
        mDataAvailableCallback = callback;
    }
    /// @return what the host has to be told with; null: nothing, or it was told before
    TelvoChangedCallback noteLinkLost();

    CameraSettings& settings() { return mSettings; }
    ModeControl& modes() { return mModes; }
    RecordedFrames& recordedFrames() { return mRecordedFrames; }
    Identity& identity() { return mIdentity; }
    const CameraModel& model() const { return mModel; }

  private:
    void releaseDevice();

    std::atomic<TelvoChangedCallback> mChangedCallback = nullptr;
    TelvoDataAvailableCallback mDataAvailableCallback = nullptr; // the library never calls it
    Identity mIdentity;
    CameraModel mModel; // as initialisation found it
    CameraLink mLink;
    CameraSettings mSettings{mLink};
    SingleImageBuffer mSingleImage;
    ModeControl mModes{mSettings, mSingleImage};
    RecordedFrames mRecordedFrames{mSettings, mModes, mSingleImage};
    std::shared_ptr<LinkLossSink> mLinkLossSink; // never null
};

#endif
