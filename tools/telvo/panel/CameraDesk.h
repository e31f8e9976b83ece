#ifndef TELVO_TOOLS_TELVO_PANEL_CAMERADESK_H
#define TELVO_TOOLS_TELVO_PANEL_CAMERADESK_H

#include "CameraAddress.h"
#include "CameraSession.h"
#include "Clients.h"
#include "DeskMode.h"
#include "DeskQueue.h"
#include "DownloadFolder.h"
#include "DownloadJobs.h"
#include "LivePictures.h"
#include "PanelNews.h"
#include "PreviewFeed.h"
#include "Request.h"
#include "SettingRows.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

namespace telvo
{

class RecordingMode;
class ReviewMode;

/**
 * Where a camera is worked with: what all pages ask of it is done one after the other on one
 * thread, and all of them are told what comes of it. Threads: put(), forget(), tellState(),
 * hasAnswered() and isOpen() any; all else is the desk's own thread. mStateLock guards what is
 * below it.
 */
class CameraDesk
{
  public:
    /// What all desks share, borrowed until the end. The functions are called on the desk's thread.
    struct Shared {
        Clients& clients;
        PanelNews& news;
        DownloadFolder& folder; // where downloads go
        DownloadJobs& jobs;
        std::function<void()> openChanged; // the camera was connected or let go
        std::function<void()> search;      // for cameras; hasAnswered() tells of this one
    };

    CameraDesk(CameraAddress address, Shared shared);
    /// Lets the camera go.
    ~CameraDesk();
    CameraDesk(const CameraDesk&) = delete;
    CameraDesk& operator=(const CameraDesk&) = delete;

    /// The answer is sent to the client.
    void put(ClientId client, std::int64_t id, CameraCommand command);
    /// A client that is gone.
    void forget(ClientId client);
    /// Tells a client how things are.
    void tellState(ClientId client) const;
    bool isOpen() const { return mIsOpen; }
    /// The camera has answered a search, here: where it is connected the next time.
    void hasAnswered(const CameraAddress& address);
    /// Makes the thread end soon; the destructor waits for it.
    void requestEnd() { mThread.request_stop(); }

  private:
    using Clock = DeskQueue::Clock;

    // CameraDesk.cpp: the thread.
    void run(const std::stop_token& stop);
    void perform(const DeskTask& task);
    void step();
    void enter(std::unique_ptr<DeskMode> mode);
    void publishState();
    std::optional<std::uint32_t> temperatureNow() const;
    void setSequences(Json sequences);
    void noticeLoss();
    void setOpen(bool open);

    // What is no work for the camera, and has been done.
    MessagePointer handle(const DeskTask& task, const PreviewRequest& request);
    MessagePointer handle(const DeskTask& task, const SeenRequest& request);

    // DeskConnection.cpp
    MessagePointer handle(const DeskTask& task, const OpenRequest& request);
    MessagePointer handle(const DeskTask& task, const CloseRequest& request);
    std::unique_ptr<DeskMode> connect(const char* news);
    void letGo();
    const CameraSession& requireSession() const;

    void connectAgain(bool live);
    std::unique_ptr<DeskMode> lost();
    bool takeAnswer();

    // DeskFeatures.cpp
    MessagePointer handle(const DeskTask& task, const FeaturesRequest& request);
    MessagePointer handle(const DeskTask& task, const SetFeatureRequest& request);
    void withoutLibrary(const std::function<void()>& work);

    // DeskLive.cpp
    MessagePointer handle(const DeskTask& task, const LiveRequest& request);
    void enterLive(const CameraSession& camera);
    void requireRest();
    void withoutLive(const std::function<void()>& work);
    void rest(const std::string& news);

    // DeskRecording.cpp
    MessagePointer handle(const DeskTask& task, const ArmRequest& request);
    MessagePointer handle(const DeskTask& task, const TriggerRequest& request);
    MessagePointer handle(const DeskTask& task, const StopRequest& request);
    MessagePointer handle(const DeskTask& task, const FlashRequest& request);
    RecordingMode& requireRecording();

    // DeskReview.cpp
    MessagePointer handle(const DeskTask& task, const RecordingRequest& request);
    MessagePointer handle(const DeskTask& task, const FrameRequest& request);
    MessagePointer handle(const DeskTask& task, const CurveRequest& request);
    void requireNoLive() const;
    ReviewMode& requireReview();
    void endReview();

    // DeskSettings.cpp
    MessagePointer handle(const DeskTask& task, const SettingsRequest& request);
    MessagePointer handle(const DeskTask& task, const SetRequest& request);
    MessagePointer handle(const DeskTask& task, const SaveSettingsRequest& request);
    MessagePointer handle(const DeskTask& task, const LoadSettingsRequest& request);
    MessagePointer write(const DeskTask& task, const std::vector<Assignment>& assignments);
    void tellSettings();
    Json readSettings();

    // DeskDownload.cpp
    MessagePointer handle(const DeskTask& task, const DownloadRequest& request);
    MessagePointer answerAtOnce(const DeskTask& task) const;
    void setBusy(const char* reason);

    CameraAddress mAddress; // its MAC stays
    const Shared mShared;
    Clients& mClients;
    DeskQueue mQueue;
    std::stop_token mStop; // of the thread
    PreviewFeed mFeed;
    LivePictures mPictures;
    SettingRows mSettings;
    std::unique_ptr<CameraSession> mSession; // null: not connected
    bool mHasFlashCard = false;
    std::optional<std::uint16_t> mGivenTrigger; // of the last recording, as its mode has it
    std::unique_ptr<DeskMode> mMode;            // never null; uses the session
    Clock::time_point mNextStep{};
    Clock::time_point mNextReport{};
    std::atomic<bool> mIsOpen{false};
    mutable std::mutex mStateLock;
    std::optional<CameraAddress> mAnswer; // of a search, not looked at yet
    MessagePointer mNewestState;
    Json mNewestSettings = Json::array();
    Json mSequences = Json::array(); // as they were listed last
    const char* mBusy = nullptr;     // why all is refused; null: it is not
    std::jthread mThread;            // last: it uses all of the above
};

} // namespace telvo

#endif
