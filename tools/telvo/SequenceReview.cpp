#include "SequenceReview.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

namespace telvo
{

namespace
{

constexpr double kMicroseconds = 1e6; // in a second

std::string fixed(double value, int digits)
{
    std::ostringstream text;
    text << std::fixed << std::setprecision(digits) << value;
    return text.str();
}

std::string spanText(const SequenceReview& review)
{
    if (const std::optional<double> seconds = review.seconds()) {
        return fixed(*seconds, 6) + " s";
    }
    if (!review.headers.empty() && isTimeOfDay(review.headers.begin()->second)) {
        return timeOfDay(review.headers.begin()->second.time) + " to " +
               timeOfDay(review.headers.rbegin()->second.time);
    }
    return "-";
}

std::string rateText(const SequenceReview& review)
{
    const std::optional<double> seconds = review.seconds();
    return seconds && *seconds > 0 ? fixed((review.recording.frames - 1) / *seconds, 1) : "-";
}

std::string triggerText(const SequenceReview& review)
{
    const std::optional<SequenceReview::Bounds> bounds = review.trigger();
    if (!bounds) {
        return "-";
    }
    return bounds->by == bounds->after + 1 ? "frame " + std::to_string(bounds->by)
                                           : "in frames " + std::to_string(bounds->after + 1) +
                                                 " to " + std::to_string(bounds->by);
}

} // namespace

std::vector<std::uint32_t> spreadFrames(std::uint32_t frames, std::uint32_t count)
{
    std::vector<std::uint32_t> chosen;
    const std::uint32_t cells = std::min(frames, count);
    for (std::uint64_t i = 0; i < cells; ++i) {
        chosen.push_back(cells < 2 ? 0
                                   : static_cast<std::uint32_t>(i * (frames - 1) / (cells - 1)));
    }
    return chosen;
}

std::optional<double> SequenceReview::seconds() const
{
    if (headers.size() < 2 || isTimeOfDay(headers.begin()->second)) {
        return std::nullopt;
    }
    const std::uint64_t span = headers.rbegin()->second.time - headers.begin()->second.time;
    return static_cast<double>(span) / kMicroseconds;
}

std::optional<SequenceReview::Bounds> SequenceReview::trigger() const
{
    const auto isBehind = [](const auto& frame) {
        return (frame.second.flags & kFlagTrailer) != 0;
    };
    const auto by = std::ranges::find_if(headers, isBehind);
    if (by == headers.begin() || by == headers.end()) {
        return std::nullopt;
    }
    return Bounds{.after = std::prev(by)->first, .by = by->first};
}

std::vector<std::string> reviewTitles()
{
    return {"SEQUENCE", "FRAMES", "SIZE", "MB", "SPAN", "FRAMES/S", "TRIGGER"};
}

std::vector<std::string> rowOf(const SequenceReview& review)
{
    const Recording& recording = review.recording;
    const double megabytes =
        static_cast<double>(recording.info.frameSize()) * recording.frames * 1e-6;
    return {std::to_string(recording.sequence),
            std::to_string(recording.frames),
            std::to_string(recording.info.width) + 'x' + std::to_string(recording.info.height),
            fixed(megabytes, 1),
            spanText(review),
            rateText(review),
            triggerText(review)};
}

Json jsonOf(const SequenceReview& review)
{
    const std::optional<double> seconds = review.seconds();
    const std::optional<SequenceReview::Bounds> trigger = review.trigger();
    Json json{{"sequence", review.recording.sequence},
              {"frames", review.recording.frames},
              {"seconds", seconds ? Json(*seconds) : Json()},
              {"trigger", trigger ? Json{{"after", trigger->after}, {"by", trigger->by}} : Json()},
              {"looked-at", Json::array()}};
    for (const auto& [frame, header] : review.headers) {
        json["looked-at"].push_back({{"frame", frame},
                                     {"counter", header.counter},
                                     {"time", header.time},
                                     {"flags", flagNames(header.flags)}});
    }
    return json;
}

} // namespace telvo
