#include "SerialLine.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <optional>
#include <string_view>

namespace camera
{
namespace
{

constexpr std::size_t kVerbLength = 2; // "GW"
constexpr std::size_t kDigits = 4;     // of a register
constexpr std::size_t kValueDigits = 8;
constexpr std::size_t kLongestCommand = 64; // beyond it, garbage is dropped
constexpr std::size_t kMostAnswers = 4096;  // bytes; the oldest are lost

std::optional<std::uint32_t> hexadecimal(std::string_view text)
{
    std::uint32_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [at, error] = std::from_chars(text.data(), end, value, 16);
    return error == std::errc{} && at == end ? std::optional{value} : std::nullopt;
}

std::string_view trimmed(std::string_view text)
{
    const auto isLineEnd = [](char c) { return c == '\r' || c == '\n'; };
    while (!text.empty() && isLineEnd(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

} // namespace

void SerialLine::send(std::span<const std::uint8_t> bytes)
{
    const auto finish = [this] {
        if (mInCommand) {
            execute(std::string(trimmed(mCommand)));
        }
        mCommand.clear();
    };
    for (const std::uint8_t byte : bytes) {
        const char character = static_cast<char>(byte);
        if (character == ':') {
            finish();
            mInCommand = true;
        } else if (mCommand.size() < kLongestCommand) {
            mCommand.push_back(character);
        }
    }
    // A start without a value is the last word of a request: it must not wait for more. Half a
    // command stays, and is completed or dropped by what follows.
    if (trimmed(mCommand).size() >= kVerbLength + kDigits) {
        finish();
        mInCommand = false;
    }
}

std::vector<std::uint8_t> SerialLine::peek(std::size_t limit) const
{
    const auto count = static_cast<std::ptrdiff_t>(std::min(limit, mAnswers.size()));
    return {mAnswers.begin(), mAnswers.begin() + count};
}

void SerialLine::consume(std::size_t count)
{
    const auto taken = static_cast<std::ptrdiff_t>(std::min(count, mAnswers.size()));
    mAnswers.erase(mAnswers.begin(), mAnswers.begin() + taken);
}

void SerialLine::execute(const std::string& command)
{
    const std::string_view text(command);
    const auto address = text.size() >= kVerbLength + kDigits
                             ? hexadecimal(text.substr(kVerbLength, kDigits))
                             : std::nullopt;
    if (!address) {
        answer(":ER");
        return;
    }
    const auto place = static_cast<std::uint16_t>(*address);
    const std::string_view rest = text.substr(kVerbLength + kDigits);
    if (text.starts_with("GR") && rest.empty()) {
        std::array<char, 16> reply{};
        std::snprintf(reply.data(), reply.size(), ":%04X%08X", place, mRegisters[place]);
        answer(reply.data());
        return;
    }
    const auto value = rest.empty() ? std::optional{0U} : hexadecimal(rest);
    const bool valid = text.starts_with("GW") && rest.size() <= kValueDigits && value.has_value();
    if (!valid || !mOnWrite(place, *value)) {
        answer(":ER");
        return;
    }
    mRegisters[place] = *value;
    if (mAcknowledges) {
        answer(":OK");
    }
}

void SerialLine::answer(const std::string& text)
{
    mAnswers.insert(mAnswers.end(), text.begin(), text.end());
    mAnswers.push_back('\r');
    consume(mAnswers.size() > kMostAnswers ? mAnswers.size() - kMostAnswers : 0);
}

} // namespace camera
