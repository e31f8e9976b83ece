#include "PanelSite.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using telvo::AccessGuard;
using telvo::PanelSite;
using telvo::SiteAnswer;
using telvo::SiteRequest;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* kSiteToken = "0123456789abcdef0123456789abcdef";
constexpr const char* kHost = "127.0.0.1:8400";
constexpr const char* kOrigin = "http://127.0.0.1:8400";

std::optional<std::filesystem::path> onlyRun1(const std::string& name)
{
    return name == "run 1.tif" ? std::optional<std::filesystem::path>("/folder/run 1.tif")
                               : std::nullopt;
}

const PanelSite& site()
{
    static const PanelSite instance(AccessGuard(8400, ""), onlyRun1);
    return instance;
}

SiteRequest get(std::string_view target)
{
    return {.method = "GET", .target = target, .host = kHost};
}

std::string header(const SiteAnswer& answer, std::string_view name)
{
    for (const auto& [key, value] : answer.headers) {
        if (key == name) {
            return value;
        }
    }
    return {};
}

TEST(PanelSite, ServesThePage)
{
    const SiteAnswer answer = site().answer(get("/"));
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(header(answer, "Content-Type"), "text/html; charset=utf-8");
    EXPECT_THAT(std::string(answer.body), StartsWith("<!DOCTYPE html>"));
    EXPECT_EQ(site().answer(get("/index.html")).body, answer.body);
}

TEST(PanelSite, LetsThePageUseNothingButItself)
{
    const SiteAnswer answer = site().answer(get("/"));
    EXPECT_THAT(header(answer, "Content-Security-Policy"), StartsWith("default-src 'none';"));
    EXPECT_THAT(header(answer, "Content-Security-Policy"), HasSubstr("frame-ancestors 'none'"));
    EXPECT_EQ(header(answer, "X-Content-Type-Options"), "nosniff");
    EXPECT_EQ(header(answer, "Referrer-Policy"), "no-referrer");
    EXPECT_EQ(header(answer, "Cross-Origin-Resource-Policy"), "same-origin");
    EXPECT_EQ(header(answer, "Cache-Control"), "no-store");
}

TEST(PanelSite, HasNothingOutsideItsTable)
{
    for (const char* const target : {"/../index.html",
                                     "/./index.html",
                                     "//index.html",
                                     "/%2e%2e/etc/passwd",
                                     "/etc/passwd",
                                     "/..%2f..%2fetc/passwd",
                                     "/%2e",
                                     "/index.html/",
                                     "/index.html?x",
                                     "/INDEX.HTML",
                                     "index.html",
                                     "",
                                     "/panel",
                                     "http://127.0.0.1:8400/",
                                     "*",
                                     "/index.html%00",
                                     "/C:/Windows/win.ini",
                                     "/..\\index.html",
                                     "/download",
                                     "/download/",
                                     "/download/../index.html",
                                     "/download/%2e%2e%2frun 1.tif",
                                     "/download/%2Fetc%2Fpasswd",
                                     "/download/run%2",
                                     "/download/%zz",
                                     "/download/run 1.tif%00"}) {
        const SiteAnswer answer = site().answer(get(target));
        EXPECT_EQ(answer.status, 404) << target;
        EXPECT_FALSE(answer.file) << target;
    }
}

TEST(PanelSite, GivesFinishedDownloadsByTheirNames)
{
    const SiteAnswer answer = site().answer(get("/download/run%201.tif"));
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.file, std::filesystem::path("/folder/run 1.tif"));
    EXPECT_EQ(header(answer, "Content-Disposition"), "attachment");
}

TEST(PanelSite, AnswersReadingMethodsOnly)
{
    for (const char* const method : {"POST", "PUT", "DELETE", "OPTIONS", "CONNECT", "TRACE", ""}) {
        const SiteAnswer answer = site().answer({.method = method, .target = "/", .host = kHost});
        EXPECT_EQ(answer.status, 405) << method;
        EXPECT_EQ(header(answer, "Allow"), "GET, HEAD");
    }
    EXPECT_EQ(site().answer({.method = "HEAD", .target = "/", .host = kHost}).status, 200);
}

TEST(PanelSite, RefusesAForeignHostForEverything)
{
    for (const char* const target : {"/", "/socket", "/download/run%201.tif", "/nothing"}) {
        SiteRequest request = get(target);
        request.host = "evil.example:8400";
        EXPECT_EQ(site().answer(request).status, 403) << target;
    }
}

TEST(PanelSite, RefusesAForeignOriginForEverything)
{
    for (const char* const target : {"/", "/socket", "/download/run%201.tif"}) {
        SiteRequest request = get(target);
        request.origin = "http://evil.example";
        EXPECT_EQ(site().answer(request).status, 403) << target;
    }
}

SiteRequest socketRequest(std::string_view origin)
{
    SiteRequest request = get("/socket");
    request.origin = origin;
    request.wantsSocket = true;
    return request;
}

TEST(PanelSite, OpensASocketToItsOwnPageOnly)
{
    EXPECT_TRUE(site().answer(socketRequest(kOrigin)).isSocket);
    for (const char* const origin : {"", "null", "http://evil.example", "http://localhost:8400"}) {
        const SiteAnswer answer = site().answer(socketRequest(origin));
        EXPECT_EQ(answer.status, 403) << origin;
        EXPECT_FALSE(answer.isSocket) << origin;
    }
}

TEST(PanelSite, HasASocketAtItsOneAddressOnly)
{
    SiteRequest request = socketRequest(kOrigin);
    request.target = "/";
    EXPECT_FALSE(site().answer(request).isSocket);
    EXPECT_EQ(site().answer(get("/socket")).status, 426);
}

TEST(PanelSite, DemandsTheTokenForEverything)
{
    const PanelSite guarded(AccessGuard(8400, kSiteToken), onlyRun1);
    for (const char* const target : {"/", "/index.html", "/download/run%201.tif", "/?token=",
                                     "/?token=wrong", "/?token=0123456789abcdef0123456789abcdee"}) {
        EXPECT_EQ(guarded.answer(get(target)).status, 403) << target;
    }
    EXPECT_FALSE(guarded.answer(socketRequest(kOrigin)).isSocket);
}

TEST(PanelSite, MakesTheTokenACookie)
{
    const PanelSite guarded(AccessGuard(8400, kSiteToken), onlyRun1);
    const SiteAnswer answer = guarded.answer(get("/?token=0123456789abcdef0123456789abcdef"));
    EXPECT_EQ(answer.status, 303);
    EXPECT_EQ(header(answer, "Location"), "/");
    EXPECT_EQ(header(answer, "Set-Cookie"), "telvo-panel-token=0123456789abcdef0123456789abcdef; "
                                            "Path=/; SameSite=Strict; HttpOnly");
    EXPECT_THAT(answer.body, IsEmpty());

    SiteRequest request = get("/");
    request.cookies = "telvo-panel-token=0123456789abcdef0123456789abcdef";
    EXPECT_EQ(guarded.answer(request).status, 200);
    SiteRequest socket = socketRequest(kOrigin);
    socket.cookies = request.cookies;
    EXPECT_TRUE(guarded.answer(socket).isSocket);
}

} // namespace
