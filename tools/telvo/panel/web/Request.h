/// What a page asks for: a line of JSON, checked in every part before anything is done.
#ifndef TELVO_TOOLS_TELVO_PANEL_WEB_REQUEST_H
#define TELVO_TOOLS_TELVO_PANEL_WEB_REQUEST_H

#include "PictureWish.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace telvo
{

// What is asked of the panel itself.
struct HelloRequest {
};
struct SearchRequest {
};
struct DownloadsRequest {
};
struct CancelRequest {
    std::uint32_t job = 0;
};

// What is asked of a camera.
struct OpenRequest {
};
struct CloseRequest {
};
struct SettingsRequest {
};
struct SetRequest {
    std::vector<std::pair<std::string, std::string>>
        values{}; // name and text, as on a command line
};
struct SaveSettingsRequest {
};
struct LoadSettingsRequest {
    std::string file{}; // the document, as JSON
};
struct FeaturesRequest {
};
struct SetFeatureRequest {
    std::string name{};
    std::string value{};
};
struct LiveRequest {
    bool on = false;
};
struct PreviewRequest {
    PictureWish wish{}; // of width 0: no pictures any more
};
struct SeenRequest {
    std::uint64_t number = 0;
};
struct ArmRequest {
    std::string mode{};
    std::string trigger{};
    std::optional<std::uint32_t> sequences{};
    std::string pre{}; // frames, or "40%"
    std::string post{};
    std::optional<std::uint32_t> frames{};
    std::optional<double> seconds{};
    std::optional<Region> window{};
    std::optional<std::uint32_t> threshold{};
    std::optional<std::uint32_t> condition{};
};
struct TriggerRequest {
};
struct StopRequest {
};
struct FlashRequest {
    bool on = false;
};
struct RecordingRequest {
};
struct FrameRequest {
    std::uint32_t sequence = 0;
    std::uint32_t frame = 0;
    PictureWish wish{};
    /// A newer one does not take its place; it comes after those that are awaited, and ends no live
    /// pictures.
    bool keep = false;
};
struct CurveRequest {
    std::uint32_t sequence = 0;
    std::uint32_t points = 0;
};
struct DownloadRequest {
    std::uint32_t sequence = 0;
    std::uint32_t first = 0;
    std::uint32_t count = 0;
    std::uint32_t every = 1;
    std::string format{};
    std::string name{};
    std::uint32_t playbackFps = 25;
    bool colour = false;
};

using PanelCommand = std::variant<HelloRequest, SearchRequest, DownloadsRequest, CancelRequest>;
using CameraCommand =
    std::variant<OpenRequest, CloseRequest, SettingsRequest, SetRequest, SaveSettingsRequest,
                 LoadSettingsRequest, FeaturesRequest, SetFeatureRequest, LiveRequest,
                 PreviewRequest, SeenRequest, ArmRequest, TriggerRequest, StopRequest, FlashRequest,
                 RecordingRequest, FrameRequest, CurveRequest, DownloadRequest>;

struct ForCamera {
    std::string camera{}; // MAC
    CameraCommand command{};
};

struct Request {
    std::int64_t id = 0; // the page's; in the answer, too
    std::variant<PanelCommand, ForCamera> what{};
};

struct BadRequest {
    std::optional<std::int64_t> id{}; // where it could be read
    std::string reason{};             // one line
};

std::variant<Request, BadRequest> parseRequest(std::string_view text);

} // namespace telvo

#endif
