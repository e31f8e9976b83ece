#include "Repetitions.h"

#include <algorithm>
#include <utility>

namespace gige::log
{

namespace
{

/// FNV-1a, never 0.
std::uint64_t hashOf(std::string_view line)
{
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char character : line) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001B3;
    }
    return std::max<std::uint64_t>(hash, 1);
}

} // namespace

std::optional<std::uint32_t> Repetitions::admit(std::string_view line, Time now)
{
    const std::uint64_t hash = hashOf(line);
    Known& known = find(hash);
    if (known.hash != hash) {
        known = {.hash = hash, .admitted = now};
        return 0;
    }
    if (now - known.admitted < kPause) {
        ++known.heldBack;
        return std::nullopt;
    }
    known.admitted = now;
    return std::exchange(known.heldBack, 0);
}

/// The line's place, or the one to be given to it.
Repetitions::Known& Repetitions::find(std::uint64_t hash)
{
    const auto found = std::ranges::find(mKnown, hash, &Known::hash);
    return found != mKnown.end() ? *found : *std::ranges::min_element(mKnown, {}, &Known::admitted);
}

} // namespace gige::log
