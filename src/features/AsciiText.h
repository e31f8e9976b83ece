#ifndef TELVO_SRC_FEATURES_ASCIITEXT_H
#define TELVO_SRC_FEATURES_ASCIITEXT_H

#include <algorithm>
#include <string_view>

/// Letters A to Z only: the result must not depend on the host's locale.
constexpr char toLowerAscii(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// Whether a host's key selects a name: the name begins with it, in any case. So an empty key
/// selects every name, and one that is longer than the name never does.
constexpr bool selects(std::string_view key, std::string_view name)
{
    return key.size() <= name.size() &&
           std::equal(key.begin(), key.end(), name.begin(),
                      [](char a, char b) { return toLowerAscii(a) == toLowerAscii(b); });
}

#endif
