#include "PanelRun.h"

#include "CancelFlag.h"
#include "Panel.h"
#include "PanelServer.h"
#include "PanelSite.h"
#include "PanelSystem.h"
#include "ToolError.h"

#include <chrono>
#include <functional>
#include <iostream>
#include <thread>
#include <vector>

namespace telvo
{

namespace
{

constexpr std::chrono::milliseconds kSignalPoll{20};
constexpr const char* kThisMachine = "127.0.0.1";

std::vector<CameraAddress> camerasOf(const PanelOptions& options)
{
    return options.cameras.cameras.empty() ? std::vector<CameraAddress>()
                                           : chooseCameras(options.cameras);
}

std::string urlOf(const PanelOptions& options, std::uint16_t port, const std::string& token)
{
    const std::string address = options.address.empty() ? kThisMachine : options.address;
    const bool isIpv6 = address.find(':') != std::string::npos;
    return "http://" + (isIpv6 ? '[' + address + ']' : address) + ':' + std::to_string(port) + '/' +
           (token.empty() ? "" : "?token=" + token);
}

void requireDownloadFolder(const std::filesystem::path& folder)
{
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error)) {
        throw Failure("there is no folder " + folder.string() + " for downloads");
    }
}

void announce(const std::string& url)
{
    std::cout << "the panel is at " << url << std::endl; // it is awaited by who started this
}

/// @param isBrowserMissing  of the browser that was opened; null: none was
void waitForEnd(std::function<bool()> isBrowserMissing)
{
    const CancelFlag cancel;
    do {
        if (isBrowserMissing && isBrowserMissing()) {
            std::cerr << "telvo: cannot open a browser; open the address in one\n";
            isBrowserMissing = nullptr;
        }
        std::this_thread::sleep_for(kSignalPoll);
    } while (!cancel.isSet());
}

} // namespace

void runPanel(const PanelOptions& options)
{
    requireDownloadFolder(options.folder);
    const std::vector<CameraAddress> cameras = camerasOf(options);
    const std::string token = options.address.empty() ? "" : makeToken();
    PanelServer server(options.address.empty() ? kThisMachine : options.address,
                       static_cast<std::uint16_t>(options.port));
    DownloadFolder downloads(std::filesystem::absolute(options.folder).lexically_normal());
    const PanelSite site(AccessGuard(server.port(), token),
                         [&](const std::string& name) { return downloads.find(name); });
    Panel panel(options.cameras.search, downloads, server);
    server.start(site, panel);
    for (const CameraAddress& camera : cameras) {
        panel.open(camera);
    }
    panel.search();
    const std::string url = urlOf(options, server.port(), token);
    announce(url);
    waitForEnd(options.open ? openBrowser(url) : nullptr);
    const Waiting waiting("the cameras to be let go");
    panel.announceEnd();
    server.stop(); // first, so that nobody asks for more; the panel then lets the cameras go
}

} // namespace telvo
