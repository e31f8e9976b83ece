#include "PanelSite.h"

#include "PageFiles.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace telvo
{

namespace
{

constexpr std::string_view kSocketPath = "/socket";
constexpr std::string_view kDownloadPath = "/download/";
constexpr std::string_view kSignInPath = "/?token=";

using Header = std::pair<std::string_view, std::string_view>;

/// The page needs nothing but itself, nobody else needs anything of it, and nothing of it is to
/// outlive the program.
constexpr std::array<Header, 5> kCommonHeaders{{
    {"Content-Security-Policy",
     "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' blob: data:; "
     "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
    {"X-Content-Type-Options", "nosniff"},
    {"Referrer-Policy", "no-referrer"},
    {"Cross-Origin-Resource-Policy", "same-origin"},
    {"Cache-Control", "no-store"},
}};

SiteAnswer plainAnswer(int status, std::string_view text)
{
    return {
        .status = status, .headers = {{"Content-Type", "text/plain; charset=utf-8"}}, .body = text};
}

/// "%20" as the letter that it stands for. None: it stands for none.
std::optional<std::string> decoded(std::string_view text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            result += text[i];
            continue;
        }
        unsigned char letter = 0;
        const std::string_view digits = text.substr(i + 1, 2);
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), letter, 16);
        if (error != std::errc{} || end != digits.data() + 2) {
            return std::nullopt;
        }
        result += static_cast<char>(letter);
        i += 2;
    }
    return result;
}

SiteAnswer page(std::string_view target)
{
    const bool isPath = target.starts_with('/');
    const std::string_view name = target == "/" ? "index.html" : target.substr(isPath ? 1 : 0);
    const auto files = pageFiles();
    const auto file = std::ranges::find(files, name, &PageFile::name);
    if (!isPath || file == files.end()) {
        return plainAnswer(404, "There is nothing at this address.\n");
    }
    return {.headers = {{"Content-Type", std::string(file->type)}}, .body = file->bytes};
}

} // namespace

PanelSite::PanelSite(AccessGuard guard, FindDownload findDownload)
    : mGuard(std::move(guard)), mFindDownload(std::move(findDownload))
{
}

SiteAnswer PanelSite::answer(const SiteRequest& request) const
{
    SiteAnswer answer;
    if (auto refused = refusal(request)) {
        answer = *std::move(refused);
    } else if (request.target == kSocketPath) {
        answer = request.wantsSocket ? SiteAnswer{.isSocket = true}
                                     : plainAnswer(426, "This address is for WebSockets.\n");
    } else if (request.target.starts_with(kDownloadPath)) {
        answer = download(request.target.substr(kDownloadPath.size()));
    } else {
        answer = page(request.target);
    }
    for (const auto& [name, value] : kCommonHeaders) {
        answer.headers.emplace_back(name, value);
    }
    return answer;
}

/// None: the request may be answered.
std::optional<SiteAnswer> PanelSite::refusal(const SiteRequest& request) const
{
    if (!mGuard.isOwnHost(request.host)) {
        return plainAnswer(403, "This panel does not go by that name. Open it by its address.\n");
    }
    const bool needsOrigin = request.wantsSocket;
    if ((needsOrigin || !request.origin.empty()) &&
        !mGuard.isOwnOrigin(request.origin, request.host)) {
        return plainAnswer(403, "Another page may not use this panel.\n");
    }
    if (request.method != "GET" && request.method != "HEAD") {
        SiteAnswer answer = plainAnswer(405, "Only GET and HEAD are answered.\n");
        answer.headers.emplace_back("Allow", "GET, HEAD");
        return answer;
    }
    if (mGuard.needsToken() && !mGuard.hasToken(request.cookies)) {
        auto entered = signIn(request.target);
        return entered ? entered
                       : plainAnswer(403, "Open the panel by the whole address that telvo "
                                          "printed, with its token.\n");
    }
    // Who has the cookie already and opens the printed address once more.
    return signIn(request.target);
}

/// The right token in the address becomes a cookie, so that it stays in no list of visited pages.
std::optional<SiteAnswer> PanelSite::signIn(std::string_view target) const
{
    if (!target.starts_with(kSignInPath) || !mGuard.isToken(target.substr(kSignInPath.size()))) {
        return std::nullopt;
    }
    return SiteAnswer{.status = 303,
                      .headers = {{"Location", "/"}, {"Set-Cookie", mGuard.cookie()}}};
}

SiteAnswer PanelSite::download(std::string_view name) const
{
    const auto plain = decoded(name);
    auto path = plain ? mFindDownload(*plain) : std::nullopt;
    if (!path) {
        return plainAnswer(404, "There is no finished download of this name.\n");
    }
    return {.headers = {{"Content-Type", "application/octet-stream"},
                        {"Content-Disposition", "attachment"}},
            .file = std::move(path)};
}

} // namespace telvo
