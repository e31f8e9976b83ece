#include "Sidecar.h"

#include "Failure.h"
#include "OutputFile.h"

#include <fstream>
#include <string>

namespace telvo
{

namespace
{

using Json = nlohmann::ordered_json;

constexpr const char* kFileFormat = "telvo-recording";

Json toJson(const FrameGap& gap)
{
    return {{"behind-frames", gap.behind},
            {"from-counter", gap.from},
            {"to-counter", gap.to},
            {"missing", gap.missing}};
}

Json toJson(const ListedFrame& listed)
{
    const FrameHeader& header = listed.header;
    Json json{{"frame", listed.frame},
              {"counter", header.counter},
              {"time", header.time},
              {"flags", flagNames(header.flags)}};
    if ((header.flags & kFlagIrigB) != 0) {
        json["time-of-day"] = timeOfDay(header.time);
    }
    json["flag-byte"] = header.flags;
    json["extra"] = header.extra;
    return json;
}

ListedFrame frameFrom(const Json& json)
{
    return {.frame = json.at("frame"),
            .header = {.time = json.at("time"),
                       .counter = json.at("counter"),
                       .flags = json.at("flag-byte"),
                       .extra = json.at("extra")}};
}

/// Texts of a camera may be in any code.
std::string textOf(const Json& json, int indent = -1)
{
    return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

void write(OutputFile& file, const std::string& text)
{
    file.write({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

/// Line by line: all frames of a long series at once would be gigabytes of JSON in memory.
void writeFrames(OutputFile& file, const FrameList& frames)
{
    const char* separator = "\n    ";
    for (const ListedFrame& frame : frames) {
        write(file, separator + textOf(toJson(frame)));
        separator = ",\n    ";
    }
}

} // namespace

std::filesystem::path sidecarPath(const std::filesystem::path& output, bool isFolder)
{
    if (isFolder) {
        return output / "recording.json";
    }
    std::filesystem::path path = output;
    return path += ".json";
}

Json verdictOf(const FrameCounter& counter, std::uint64_t expected)
{
    const bool isWhole = counter.received() == expected;
    Json verdict{{"whole", isWhole && counter.isContinuous()},
                 {"received", counter.received()},
                 {"expected", expected},
                 {"continuous", counter.isContinuous()},
                 {"missing", counter.missing()},
                 {"gap-count", counter.gapCount()},
                 {"gaps", Json::array()}};
    for (const FrameGap& gap : counter.gaps()) {
        verdict["gaps"].push_back(toJson(gap));
    }
    return verdict;
}

void writeSidecar(const std::filesystem::path& path, const Sidecar& sidecar,
                  const FrameCounter& counter, std::uint64_t expected, IfThere ifThere)
{
    Json head{{"format", kFileFormat}, {"version", 1}};
    head.update(sidecar.about);
    head["counter-check"] = verdictOf(counter, expected);
    std::string text = textOf(head, 2);
    text.erase(text.size() - 2); // the line that ends it

    OutputFile file(path, ifThere);
    write(file, text + ",\n  \"frames\": [");
    writeFrames(file, sidecar.frames);
    write(file, "\n  ]\n}\n");
    file.sync();
    file.commit();
}

Sidecar readSidecar(const std::filesystem::path& path)
{
    Sidecar sidecar;
    // Each frame is taken out as soon as it is read, so that they never are all there as JSON.
    const auto takeFrames = [&](int depth, Json::parse_event_t event, Json& parsed) {
        const bool isFrame =
            event == Json::parse_event_t::object_end && depth == 2 && parsed.contains("flag-byte");
        if (isFrame) {
            sidecar.frames.push_back(frameFrom(parsed));
        }
        return !isFrame;
    };
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw Failure("there is no " + path.string() + " that says what was downloaded");
    }
    try {
        sidecar.about = Json::parse(file, takeFrames);
        if (sidecar.about.at("format") != kFileFormat) {
            throw Failure(path.string() + " is no description of a recording");
        }
    } catch (const nlohmann::json::exception&) {
        throw Failure(path.string() + " is no description of a recording");
    }
    return sidecar;
}

} // namespace telvo
