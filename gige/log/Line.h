#ifndef TELVO_GIGE_LOG_LINE_H
#define TELVO_GIGE_LOG_LINE_H

#include <algorithm>
#include <array>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <string_view>

namespace gige::log
{

/// A text of limited length that needs no memory: it is told where there is none left, too. What
/// does not fit is cut off.
class Line
{
  public:
    static constexpr std::size_t kRoom = 500; // bytes

    Line() = default;
    Line(std::string_view text) { *this << text; } // implicit: texts are literals mostly
    Line(const char* text) : Line(std::string_view(text)) {}

    Line& operator<<(std::string_view text)
    {
        const std::size_t size = std::min(text.size(), kRoom - mSize);
        std::copy_n(text.data(), size, mText.begin() + static_cast<std::ptrdiff_t>(mSize));
        mSize += size;
        return *this;
    }
    template <std::integral Number>
    requires(sizeof(Number) > 1) Line& operator<<(Number number)
    {
        std::array<char, 24> digits{}; // 20 of 64 bits, and a sign
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        return *this << std::string_view(digits.data(), end);
    }

    [[nodiscard]] std::string_view view() const { return {mText.data(), mSize}; }
    operator std::string_view() const { return view(); } // as std::string
    [[nodiscard]] bool empty() const { return mSize == 0; }

  private:
    std::array<char, kRoom> mText{};
    std::size_t mSize = 0;
};

} // namespace gige::log

#endif
