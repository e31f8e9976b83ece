#include "Panel.h"

#include "PanelMessages.h"

#include <exception>
#include <utility>

namespace telvo
{

Panel::Panel(const SearchOptions& search, DownloadFolder& downloads, Clients& clients)
    : mDownloads(downloads),
      mClients(clients),
      mNews(clients),
      mJobs(clients),
      mFinder(
          search, [this](const std::vector<FoundCamera>& cameras) { onFound(cameras); },
          [this](const std::string& reason) { mNews.tell(reason); })
{
}

Panel::~Panel()
{
    std::map<std::string, std::unique_ptr<CameraDesk>> desks;
    {
        const std::lock_guard guard(mLock);
        desks.swap(mDesks); // while they end, they still tell who is there
    }
    for (const auto& [mac, desk] : desks) {
        desk->requestEnd(); // all of them at once; their destructors wait
    }
}

void Panel::open(const CameraAddress& camera)
{
    {
        const std::lock_guard guard(mLock);
        mCameras[camera.mac] = {camera, true};
    }
    constexpr ClientId kNobody = 0; // awaits the answer
    addDesk(camera).put(kNobody, 0, OpenRequest{});
}

void Panel::announceEnd()
{
    mClients.sendAll(eventMessage("end", {{"text", "the panel's program has ended"}}));
}

void Panel::onOpened(ClientId /*client*/) {} // it says hello first

void Panel::onMessage(ClientId client, std::string_view text)
{
    const auto parsed = parseRequest(text);
    if (const auto* const bad = std::get_if<BadRequest>(&parsed)) {
        return mClients.send(client, errorMessage(bad->id ? Json(*bad->id) : Json(), bad->reason));
    }
    const auto& request = std::get<Request>(parsed);
    try {
        std::visit([&](const auto& what) { handle(client, request.id, what); }, request.what);
    } catch (const std::exception& error) { // the program lives on for the other pages
        mClients.send(client, errorMessage(request.id, error.what()));
    }
}

void Panel::onClosed(ClientId client)
{
    mNews.forget(client);
    for (CameraDesk* const desk : allDesks()) {
        desk->forget(client);
    }
}

void Panel::handle(ClientId client, std::int64_t id, const PanelCommand& command)
{
    if (std::holds_alternative<HelloRequest>(command)) {
        greet(client, id);
    } else if (std::holds_alternative<SearchRequest>(command)) {
        search();
        mClients.send(client, answerMessage(id));
    } else if (std::holds_alternative<DownloadsRequest>(command)) {
        mClients.send(client, answerMessage(id, {{"files", mDownloads.list()}}));
    } else if (mJobs.cancel(std::get<CancelRequest>(command).job)) {
        mClients.send(client, answerMessage(id));
    } else {
        mClients.send(client, errorMessage(id, "there is no such job, or it has ended"));
    }
}

void Panel::handle(ClientId client, std::int64_t id, const ForCamera& request)
{
    if (CameraDesk* const desk = deskOf(request.camera)) {
        desk->put(client, id, request.command);
    } else {
        mClients.send(client, errorMessage(id, "there is no camera '" + request.camera +
                                                   "'; search for cameras first"));
    }
}

void Panel::greet(ClientId client, std::int64_t id)
{
    mClients.send(client, answerMessage(id, {{"version", TELVO_VERSION},
                                             {"cameras", cameraRows()},
                                             {"folder", mDownloads.text()},
                                             {"formats", DownloadFolder::formats()},
                                             {"downloads", mDownloads.list()}}));
    for (const CameraDesk* const desk : allDesks()) {
        desk->tellState(client);
    }
    mJobs.tellAll(client);
    mNews.greet(client);
}

void Panel::onFound(const std::vector<FoundCamera>& cameras)
{
    {
        const std::lock_guard guard(mLock);
        std::erase_if(mCameras, [this](const auto& row) { return !mDesks.contains(row.first); });
        for (const FoundCamera& camera : cameras) {
            mCameras[camera.address.mac] = camera;
            if (const auto desk = mDesks.find(camera.address.mac); desk != mDesks.end()) {
                desk->second->hasAnswered(camera.address);
            }
        }
    }
    tellCameras();
}

Json Panel::cameraRows()
{
    const std::lock_guard guard(mLock);
    Json rows = Json::array();
    for (const auto& [mac, camera] : mCameras) {
        const auto desk = mDesks.find(mac);
        const bool isOpen = desk != mDesks.end() && desk->second->isOpen();
        const gige::wire::DiscoveryAck& info = camera.address.device.info;
        rows.push_back({{"camera", mac},
                        {"name", info.userDefinedName},
                        {"model", info.model},
                        {"serial", info.serialNumber},
                        {"address", camera.address.ip},
                        {"free", camera.isFree && !isOpen},
                        {"open", isOpen}});
    }
    return rows;
}

void Panel::tellCameras()
{
    mClients.sendAll(eventMessage("cameras", {{"cameras", cameraRows()}}));
}

/// Null: there is no such camera.
CameraDesk* Panel::deskOf(const std::string& camera)
{
    CameraAddress address;
    {
        const std::lock_guard guard(mLock);
        const auto found = mCameras.find(camera);
        if (found == mCameras.end()) {
            return nullptr;
        }
        address = found->second.address;
    }
    return &addDesk(address);
}

/// The one there is, if there is one. A desk stays until the end.
CameraDesk& Panel::addDesk(const CameraAddress& address)
{
    const std::lock_guard guard(mLock);
    auto& desk = mDesks[address.mac];
    if (!desk) {
        desk = std::make_unique<CameraDesk>(
            address, CameraDesk::Shared{.clients = mClients,
                                        .news = mNews,
                                        .folder = mDownloads,
                                        .jobs = mJobs,
                                        .openChanged = [this] { tellCameras(); },
                                        .search = [this] { search(); }});
    }
    return *desk;
}

std::vector<CameraDesk*> Panel::allDesks()
{
    const std::lock_guard guard(mLock);
    std::vector<CameraDesk*> desks;
    for (const auto& [mac, desk] : mDesks) {
        desks.push_back(desk.get());
    }
    return desks;
}

} // namespace telvo
