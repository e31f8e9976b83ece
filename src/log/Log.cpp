#include "Log.h"

#include "Kernel.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <string_view>

namespace
{

constexpr std::size_t kMaximumTextLength = 997;
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

using Line = std::array<char, kMaximumTextLength + kLineEnd.size() + 1>;

/// Length of the text without trailing white space.
std::size_t strippedLength(std::string_view text)
{
    const std::size_t last = text.find_last_not_of(kWhiteSpace);
    return last == std::string_view::npos ? 0 : last + 1;
}

} // namespace

void writeLog(const char* format, ...)
{
    Line line{};
    std::va_list arguments;
    va_start(arguments, format);
    const int result = std::vsnprintf(line.data(), kMaximumTextLength + 1, format, arguments);
    va_end(arguments);

    // A formatter that fails or cuts reports no usable length: the buffer counts as full.
    const std::size_t length = result < 0
                                   ? kMaximumTextLength
                                   : std::min(static_cast<std::size_t>(result), kMaximumTextLength);
    char* const end = line.data() + strippedLength({line.data(), length});
    *std::copy(kLineEnd.begin(), kLineEnd.end(), end) = '\0';
    OutputDebugStringA(line.data());
}
