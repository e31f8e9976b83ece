#include "Request.h"

#include "RequestFields.h"

#include <algorithm>
#include <array>
#include <limits>

namespace telvo
{

namespace
{

using Json = nlohmann::json;

constexpr std::uint64_t kMostId = (std::uint64_t{1} << 53U) - 1; // what a page's numbers hold
constexpr int kMostDepth = 8; // of objects within one another; a file of settings has 4
constexpr std::uint32_t kMostPoints = 4096;
constexpr std::uint32_t kMostFps = 1000;
constexpr double kMostSeconds = 31'536'000; // a year

Region regionOf(RequestFields fields)
{
    const Region region{.x = fields.number("x"),
                        .y = fields.number("y"),
                        .width = fields.number("width"),
                        .height = fields.number("height")};
    fields.requireEnd();
    return region;
}

std::optional<Region> optionalRegion(RequestFields& fields, const char* name)
{
    return fields.has(name) ? std::optional(regionOf(fields.object(name))) : std::nullopt;
}

std::optional<std::uint32_t> optionalNumber(RequestFields& fields, const char* name)
{
    return fields.has(name) ? std::optional(fields.number(name)) : std::nullopt;
}

std::uint32_t numberFrom(RequestFields& fields, const char* name, std::uint32_t least,
                         std::uint32_t most)
{
    const auto number = static_cast<std::uint32_t>(fields.number(name, most));
    if (number < least) {
        throw WrongRequest("'" + std::string(name) + "' has to be at least " +
                           std::to_string(least));
    }
    return number;
}

template <std::size_t Count>
std::string wordFrom(RequestFields& fields, const char* name,
                     const std::array<std::string_view, Count>& words)
{
    std::string word = fields.text(name);
    if (std::ranges::find(words, word) == words.end()) {
        throw WrongRequest("'" + std::string(name) + "' has no '" + word + "'");
    }
    return word;
}

/// A value as a command line would have it.
std::string plainText(const std::string& name, const Json& value)
{
    if (value.is_string()) {
        return value.get<std::string>();
    }
    if (value.is_boolean()) {
        return value.get<bool>() ? "on" : "off";
    }
    if (!value.is_number()) {
        throw WrongRequest("'" + name + "' has to be a text, a number, true or false");
    }
    return value.dump();
}

PictureWish wishOf(RequestFields& fields)
{
    constexpr std::array<std::string_view, 5> kColours{"", "RG", "GR", "GB", "BG"};
    PictureWish wish;
    wish.width = optionalNumber(fields, "width").value_or(0);
    wish.region = optionalRegion(fields, "region");
    wish.isRaw = fields.has("raw") && fields.flag("raw");
    if (fields.has("colour")) {
        wish.colour = wordFrom(fields, "colour", kColours);
    }
    return wish;
}

CameraCommand parseSet(RequestFields& fields)
{
    SetRequest request;
    const Json values = fields.any("values");
    if (!values.is_object()) {
        throw WrongRequest("'values' of set has to be an object");
    }
    for (const auto& [name, value] : values.items()) {
        request.values.emplace_back(name, plainText(name, value));
    }
    return request;
}

CameraCommand parseLoadSettings(RequestFields& fields)
{
    const Json file = fields.any("file");
    if (!file.is_object()) {
        throw WrongRequest("'file' of loadSettings has to be an object");
    }
    return LoadSettingsRequest{file.dump()};
}

CameraCommand parseSetFeature(RequestFields& fields)
{
    return SetFeatureRequest{fields.text("name"), plainText("value", fields.any("value"))};
}

CameraCommand parsePreview(RequestFields& fields)
{
    return PreviewRequest{wishOf(fields)};
}

CameraCommand parseArm(RequestFields& fields)
{
    constexpr std::array<std::string_view, 2> kModes{"single", "ring"};
    constexpr std::array<std::string_view, 4> kTriggers{"none", "external", "window", "key"};
    ArmRequest request{.mode = wordFrom(fields, "mode", kModes),
                       .trigger = wordFrom(fields, "trigger", kTriggers),
                       .sequences = optionalNumber(fields, "sequences"),
                       .frames = optionalNumber(fields, "frames"),
                       .window = optionalRegion(fields, "window"),
                       .threshold = optionalNumber(fields, "threshold"),
                       .condition = optionalNumber(fields, "condition")};
    if (fields.has("pre")) {
        request.pre = plainText("pre", fields.any("pre"));
    }
    if (fields.has("post")) {
        request.post = plainText("post", fields.any("post"));
    }
    if (fields.has("seconds")) {
        request.seconds = fields.real("seconds", kMostSeconds);
    }
    return request;
}

CameraCommand parseFrame(RequestFields& fields)
{
    return FrameRequest{.sequence = fields.number("sequence"),
                        .frame = fields.number("frame"),
                        .wish = wishOf(fields),
                        .keep = fields.has("keep") && fields.flag("keep")};
}

CameraCommand parseCurve(RequestFields& fields)
{
    return CurveRequest{.sequence = fields.number("sequence"),
                        .points = numberFrom(fields, "points", 2, kMostPoints)};
}

CameraCommand parseDownload(RequestFields& fields)
{
    constexpr std::uint32_t kMost = std::numeric_limits<std::uint32_t>::max();
    constexpr std::array<std::string_view, 5> kFormats{"raw", "png", "tiff", "mkv", "mp4"};
    return DownloadRequest{.sequence = fields.number("sequence"),
                           .first = fields.number("first"),
                           .count = numberFrom(fields, "count", 1, kMost),
                           .every = fields.has("every") ? numberFrom(fields, "every", 1, kMost) : 1,
                           .format = wordFrom(fields, "format", kFormats),
                           .name = fields.text("name"),
                           .playbackFps = fields.has("playbackFps")
                                              ? numberFrom(fields, "playbackFps", 1, kMostFps)
                                              : 25,
                           .colour = fields.has("colour") && fields.flag("colour")};
}

template <typename Command>
CameraCommand parsePlain(RequestFields& /*fields*/)
{
    return Command{};
}

template <typename Command>
CameraCommand parseSwitch(RequestFields& fields)
{
    return Command{fields.flag("on")};
}

struct CameraRow {
    std::string_view name;
    CameraCommand (*parse)(RequestFields& fields);
};

constexpr std::array kCameraRows{
    CameraRow{"open", parsePlain<OpenRequest>},
    CameraRow{"close", parsePlain<CloseRequest>},
    CameraRow{"settings", parsePlain<SettingsRequest>},
    CameraRow{"set", parseSet},
    CameraRow{"saveSettings", parsePlain<SaveSettingsRequest>},
    CameraRow{"loadSettings", parseLoadSettings},
    CameraRow{"features", parsePlain<FeaturesRequest>},
    CameraRow{"setFeature", parseSetFeature},
    CameraRow{"live", parseSwitch<LiveRequest>},
    CameraRow{"preview", parsePreview},
    CameraRow{"seen",
              [](RequestFields& fields) -> CameraCommand {
                  return SeenRequest{fields.number("number", kMostId)};
              }},
    CameraRow{"arm", parseArm},
    CameraRow{"trigger", parsePlain<TriggerRequest>},
    CameraRow{"stop", parsePlain<StopRequest>},
    CameraRow{"flash", parseSwitch<FlashRequest>},
    CameraRow{"recording", parsePlain<RecordingRequest>},
    CameraRow{"frame", parseFrame},
    CameraRow{"curve", parseCurve},
    CameraRow{"download", parseDownload},
};

std::optional<PanelCommand> parsePanelCommand(const std::string& name, RequestFields& fields)
{
    if (name == "hello") {
        return HelloRequest{};
    }
    if (name == "search") {
        return SearchRequest{};
    }
    if (name == "downloads") {
        return DownloadsRequest{};
    }
    return name == "cancel" ? std::optional<PanelCommand>(CancelRequest{fields.number("job")})
                            : std::nullopt;
}

ForCamera parseForCamera(const std::string& name, RequestFields& fields)
{
    const auto row = std::ranges::find(kCameraRows, name, &CameraRow::name);
    if (row == kCameraRows.end()) {
        throw WrongRequest("there is nothing called '" + name + "' to do");
    }
    std::string camera = fields.text("camera");
    return {std::move(camera), row->parse(fields)};
}

/// What is deeper would take a stack of any depth to write out again.
Json parseJson(std::string_view text)
{
    return Json::parse(text, [](int depth, Json::parse_event_t /*event*/, Json& /*parsed*/) {
        if (depth > kMostDepth) {
            throw WrongRequest("a request has too much within one another");
        }
        return true;
    });
}

} // namespace

std::variant<Request, BadRequest> parseRequest(std::string_view text)
{
    BadRequest bad;
    try {
        RequestFields fields(parseJson(text), "a request");
        const auto id = static_cast<std::int64_t>(fields.number("id", kMostId));
        bad.id = id;
        const std::string name = fields.text("do");
        Request request{.id = id};
        if (auto command = parsePanelCommand(name, fields)) {
            request.what = *command;
        } else {
            request.what = parseForCamera(name, fields);
        }
        fields.requireEnd();
        return request;
    } catch (const WrongRequest& wrong) {
        bad.reason = wrong.what();
    } catch (const Json::exception&) {
        bad.reason = "this is no JSON";
    }
    return bad;
}

} // namespace telvo
