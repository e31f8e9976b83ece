#ifndef TELVO_SRC_LOG_LOGTEXT_H
#define TELVO_SRC_LOG_LOGTEXT_H

#include "Log.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

namespace logtext
{

/// What a printf conversion takes from the argument list.
enum class Kind { Signed32, Unsigned32, Signed64, Double, Text, Unsupported };

template <typename T>
consteval Kind kindOf()
{
    if constexpr (std::is_floating_point_v<T>) {
        return Kind::Double;
    } else if constexpr (std::is_same_v<T, const char*> || std::is_same_v<T, char*>) {
        return Kind::Text;
    } else if constexpr (std::is_integral_v<T>) {
        using Promoted = decltype(+T{});
        if constexpr (sizeof(Promoted) == sizeof(std::int32_t)) {
            return std::is_signed_v<Promoted> ? Kind::Signed32 : Kind::Unsigned32;
        } else {
            return std::is_signed_v<Promoted> ? Kind::Signed64 : Kind::Unsupported;
        }
    } else {
        return Kind::Unsupported;
    }
}

/// Reads one conversion; `at` is behind its '%' and ends behind its letter.
constexpr Kind readConversion(std::string_view format, std::size_t& at)
{
    constexpr std::string_view kFlagsWidthPrecision = "0123456789.-+ #";
    constexpr std::array<std::string_view, 3> kLong{"I64", "ll", "l"}; // spellings of PRId64
    while (at < format.size() && kFlagsWidthPrecision.find(format[at]) != std::string_view::npos) {
        ++at;
    }
    for (const std::string_view spelling : kLong) {
        if (format.substr(at).starts_with(spelling)) {
            at += spelling.size();
            return at < format.size() && format[at++] == 'd' ? Kind::Signed64 : Kind::Unsupported;
        }
    }
    switch (at < format.size() ? format[at++] : '\0') {
    case 'd':
        return Kind::Signed32;
    case 'u':
    case 'X':
        return Kind::Unsigned32;
    case 'f':
        return Kind::Double;
    case 's':
        return Kind::Text;
    default:
        return Kind::Unsupported;
    }
}

/// Not constexpr on purpose: reaching it while compiling is the error message.
inline void conversionsDoNotMatchTheArguments() {}

template <typename... Args>
constexpr void check(std::string_view format)
{
    constexpr std::array<Kind, sizeof...(Args)> kExpected{kindOf<Args>()...};
    std::size_t count = 0;
    for (std::size_t at = 0; at < format.size();) {
        if (format[at++] != '%') {
            continue;
        }
        const Kind kind = readConversion(format, at);
        if (kind == Kind::Unsupported || count == kExpected.size() || kExpected.at(count) != kind) {
            conversionsDoNotMatchTheArguments();
        }
        ++count;
    }
    if (count != kExpected.size()) {
        conversionsDoNotMatchTheArguments();
    }
}

} // namespace logtext

/**
 * A printf-style log text whose conversions fit Args; a text that does not fit fails to compile.
 * Default-constructed it stands for "no line". The text is borrowed: string literals only.
 */
template <typename... Args>
class LogText
{
  public:
    constexpr LogText() = default;

    template <std::size_t Size>
    consteval LogText(const char (&format)[Size]) : mFormat(format) // implicit: rows of literals
    {
        logtext::check<Args...>({format, Size - 1});
    }

    void log(Args... arguments) const
    {
        if (mFormat != nullptr) {
            writeLog(mFormat, arguments...);
        }
    }

  private:
    const char* mFormat = nullptr;
};

/// Logs one line whose text stands beside its operation.
template <typename... Args>
void logLine(LogText<std::type_identity_t<Args>...> text, Args... arguments)
{
    text.log(arguments...);
}

#endif
