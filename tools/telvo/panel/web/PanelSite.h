#ifndef TELVO_TOOLS_TELVO_PANEL_WEB_PANELSITE_H
#define TELVO_TOOLS_TELVO_PANEL_WEB_PANELSITE_H

#include "AccessGuard.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace telvo
{

/// What of a HTTP request counts here. Headers that are not there are empty.
struct SiteRequest {
    std::string_view method{}; // "GET"
    std::string_view target{}; // "/panel.css"
    std::string_view host{};
    std::string_view origin{};
    std::string_view cookies{};
    bool wantsSocket = false; // asks for a WebSocket
};

struct SiteAnswer {
    int status = 200;
    std::vector<std::pair<std::string_view, std::string>> headers{};
    std::string_view body{};                     // static, or the program's own
    std::optional<std::filesystem::path> file{}; // sent in place of the body
    bool isSocket = false;                       // the request becomes a WebSocket
};

/// A finished download's place, by the name under which it is listed; none: there is none.
using FindDownload = std::function<std::optional<std::filesystem::path>(const std::string& name)>;

/**
 * What is at which address: the page's files, the WebSocket, the finished downloads. Every request
 * passes the guard first. Nothing is looked up on a disk but by FindDownload.
 */
class PanelSite
{
  public:
    PanelSite(AccessGuard guard, FindDownload findDownload);

    SiteAnswer answer(const SiteRequest& request) const;

  private:
    std::optional<SiteAnswer> refusal(const SiteRequest& request) const;
    std::optional<SiteAnswer> signIn(std::string_view target) const;
    SiteAnswer download(std::string_view name) const;

    AccessGuard mGuard;
    FindDownload mFindDownload;
};

} // namespace telvo

#endif
