#ifndef TELVO_SRC_GRABBER_FIXEDTEXT_H
#define TELVO_SRC_GRABBER_FIXEDTEXT_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

/// Field of 50 characters including its NUL: hosts hand buffers of this size to expGetParam.
class FixedText
{
  public:
    static constexpr std::size_t kSize = 50;

    /// Longer texts are cut at 49 characters.
    FixedText& operator=(std::string_view text)
    {
        const std::string_view cut = text.substr(0, kSize - 1);
        mText.fill('\0');
        std::copy(cut.begin(), cut.end(), mText.begin());
        return *this;
    }

    const char* c_str() const { return mText.data(); }
    bool empty() const { return mText.front() == '\0'; }
    bool operator==(const FixedText&) const = default;

  private:
    std::array<char, kSize> mText{};
};

#endif
