#ifndef TELVO_TOOLS_TELVO_PANEL_PANEL_H
#define TELVO_TOOLS_TELVO_PANEL_PANEL_H

#include "CameraDesk.h"
#include "CameraFinder.h"
#include "Clients.h"
#include "DownloadFolder.h"
#include "PanelNews.h"
#include "Request.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace telvo
{

/**
 * What all pages share: the cameras that were found, a desk for each that is worked with, the
 * folder of downloads.
 * Threads: the network's calls the listener's functions, the finder's and the desks' tell their
 * news; mLock guards mCameras and mDesks, and is held by nobody who waits for a camera.
 */
class Panel : public ClientListener
{
  public:
    /// Both are borrowed until the end.
    Panel(const SearchOptions& search, DownloadFolder& downloads, Clients& clients);
    /// Lets all cameras go, each on its own thread.
    ~Panel() override;
    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;

    /// Looks for cameras; who is there, all pages are told.
    void search() { mFinder.search(); }
    /// Connects a camera without a page.
    void open(const CameraAddress& camera);
    /// Tells the pages that the program ends.
    void announceEnd();

    void onOpened(ClientId client) override;
    void onMessage(ClientId client, std::string_view text) override;
    void onClosed(ClientId client) override;

  private:
    void handle(ClientId client, std::int64_t id, const PanelCommand& command);
    void handle(ClientId client, std::int64_t id, const ForCamera& request);
    void greet(ClientId client, std::int64_t id);
    void onFound(const std::vector<FoundCamera>& cameras);
    Json cameraRows();
    void tellCameras();
    CameraDesk* deskOf(const std::string& camera);
    CameraDesk& addDesk(const CameraAddress& address);
    std::vector<CameraDesk*> allDesks();

    DownloadFolder& mDownloads;
    Clients& mClients;
    PanelNews mNews;
    DownloadJobs mJobs;
    std::mutex mLock;
    std::map<std::string, FoundCamera> mCameras; // by MAC; those with a desk stay
    std::map<std::string, std::unique_ptr<CameraDesk>> mDesks;
    CameraFinder mFinder; // last: its thread uses all of the above
};

} // namespace telvo

#endif
