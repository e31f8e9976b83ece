#include "Sidecar.h"

#include "Failure.h"
#include "OutputFile.h"
#include "Utf8Path.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>

namespace telvo
{

namespace
{

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

constexpr const char* kFileFormat = "telvo-recording";
constexpr const char* kJournalFormat = "telvo-unfinished";

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
    if (isTimeOfDay(header)) {
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

/// An object to which members are still to be added: without the line that ends it.
std::string beginningOf(const Json& object)
{
    std::string text = textOf(object, 2);
    text.erase(text.size() - 2);
    return text;
}

/// More than a frame's line takes, or what is said of a gap.
constexpr std::uint64_t kLineSize = 256; // bytes

std::uint64_t sizeAtMost(const Json& about, std::uint64_t frames)
{
    const std::uint64_t gaps = std::min<std::uint64_t>(frames, FrameCounter::kMostGaps);
    return 2 * textOf(about, 2).size() + (frames + gaps + 2) * kLineSize;
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

bool readLine(const std::string& line, ListedFrame& listed)
{
    std::istringstream numbers(line);
    unsigned flags = 0;
    unsigned extra = 0;
    FrameHeader& header = listed.header;
    numbers >> listed.frame >> header.time >> header.counter >> flags >> extra;
    header.flags = static_cast<std::uint8_t>(flags);
    header.extra = static_cast<std::uint8_t>(extra);
    return !numbers.fail();
}

/// The frames up to the line that the process did not end. None: it is no journal, or that of a
/// file that is gone.
std::optional<UnfinishedSeries> readJournal(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string line;
    std::getline(file, line);
    const Json head = Json::parse(line, nullptr, false);
    if (!head.is_object() || head.value("format", "") != kJournalFormat) {
        return std::nullopt;
    }
    UnfinishedSeries series{.sidecar = {.about = head.value("about", Json()), .frames = {}},
                            .output = path.parent_path() / utf8Path(head.value("output", "")),
                            .ifThere =
                                head.value("replaces", false) ? IfThere::Replace : IfThere::Refuse,
                            .journals = {path}};
    for (ListedFrame frame{}; std::getline(file, line) && !file.eof() && readLine(line, frame);) {
        series.sidecar.frames.push_back(frame);
    }
    return exists(series.output) && series.sidecar.about.is_object()
               ? std::optional(std::move(series))
               : std::nullopt;
}

std::optional<UnfinishedSeries> journalIn(const fs::path& path)
{
    try {
        return readJournal(path);
    } catch (const Json::exception&) {
        return std::nullopt;
    }
}

/// Of two processes that were killed while the one continued what the other had left.
UnfinishedSeries newer(UnfinishedSeries one, UnfinishedSeries other)
{
    if (one.output != other.output) {
        throw Failure("two unfinished downloads could be continued, " + one.output.string() +
                      " and " + other.output.string() + "; remove one of them");
    }
    const bool isLonger = one.sidecar.frames.size() > other.sidecar.frames.size();
    UnfinishedSeries& longer = isLonger ? one : other;
    const UnfinishedSeries& shorter = isLonger ? other : one;
    longer.journals.insert(longer.journals.end(), shorter.journals.begin(), shorter.journals.end());
    return std::move(longer);
}

} // namespace

fs::path sidecarPath(const fs::path& output, bool isFolder)
{
    if (isFolder) {
        return output / "recording.json";
    }
    fs::path path = output;
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

SidecarFile::SidecarFile(const fs::path& path, IfThere sidecarIfThere, const Json& about,
                         const fs::path& output, IfThere ifThere, std::uint64_t expected)
    : mFile(path, sidecarIfThere), mExpected(expected)
{
    const std::string head =
        textOf(Json{{"format", kJournalFormat},
                    {"output", proximate(output, fs::absolute(path).parent_path()).string()},
                    {"replaces", ifThere == IfThere::Replace},
                    {"about", about}});
    mFile.reserve(sizeAtMost(about, expected));
    write(mFile, head + '\n');
    mFile.flush();
}

void SidecarFile::keep(const FrameList& frames, std::size_t count)
{
    std::ostringstream lines;
    for (; mKept < count; ++mKept) {
        const auto& [frame, header] = frames[mKept];
        lines << frame << ' ' << header.time << ' ' << header.counter << ' ' << int{header.flags}
              << ' ' << int{header.extra} << '\n';
    }
    write(mFile, lines.str());
    mFile.flush();
}

void SidecarFile::finish(const Sidecar& sidecar, const FrameCounter& counter)
{
    Json head{{"format", kFileFormat}, {"version", 1}};
    head.update(sidecar.about);
    head["counter-check"] = verdictOf(counter, mExpected);

    mFile.seek(0);
    write(mFile, beginningOf(head) + ",\n  \"frames\": [");
    writeFrames(mFile, sidecar.frames);
    write(mFile, "\n  ]\n}\n");
    mFile.resize(mFile.position()); // the journal may have been longer
    mFile.sync();
    mFile.commit();
}

std::optional<UnfinishedSeries> findUnfinished(const fs::path& path)
{
    std::optional<UnfinishedSeries> found;
    for (const fs::path& partial : partialsOf(path)) {
        std::optional<UnfinishedSeries> series = journalIn(partial);
        if (series && found) {
            series = newer(std::move(*found), std::move(*series));
        }
        found = series ? std::move(series) : std::move(found);
    }
    return found;
}

bool isSidecar(const fs::path& path)
{
    const std::string expected = beginningOf(Json{{"format", kFileFormat}});
    std::string found(expected.size(), '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(found.data(), static_cast<std::streamsize>(found.size()));
    return found == expected;
}

Sidecar readSidecar(const fs::path& path)
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
        throw Failure("there is no " + path.string() +
                      " that says what was downloaded; "
                      "leave out --resume");
    }
    try {
        sidecar.about = Json::parse(file, takeFrames);
        if (sidecar.about.at("format") != kFileFormat) {
            throw Failure(path.string() + " is no description of a recording; leave out --resume");
        }
    } catch (const nlohmann::json::exception&) {
        throw Failure(path.string() + " is no description of a recording; leave out --resume");
    }
    return sidecar;
}

} // namespace telvo
