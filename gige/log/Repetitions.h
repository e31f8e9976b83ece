#ifndef TELVO_GIGE_LOG_REPETITIONS_H
#define TELVO_GIGE_LOG_REPETITIONS_H

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace gige::log
{

/// Lets the same line through once a second. Pure, with the time handed in; of fixed size: when
/// there are more different lines than it knows, the one let through longest ago is forgotten.
class Repetitions
{
  public:
    using Time = std::chrono::steady_clock::time_point;
    static constexpr std::chrono::seconds kPause{1};
    static constexpr std::size_t kKnown = 32;

    /// @return how often the line was held back since it was let through; none: it is held back now
    std::optional<std::uint32_t> admit(std::string_view line, Time now);

  private:
    struct Known {
        std::uint64_t hash = 0; // of the line; 0: nothing
        Time admitted{};
        std::uint32_t heldBack = 0;
    };

    Known& find(std::uint64_t hash);

    std::array<Known, kKnown> mKnown{};
};

} // namespace gige::log

#endif
