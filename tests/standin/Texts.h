#ifndef TELVO_TESTS_STANDIN_TEXTS_H
#define TELVO_TESTS_STANDIN_TEXTS_H

#include <string>
#include <vector>

/// Recorded calls or log lines, in order.
using Texts = std::vector<std::string>;

/// One sequence after the other.
inline Texts operator+(Texts left, const Texts& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

inline Texts times(int count, const Texts& texts)
{
    Texts repeated;
    for (int i = 0; i < count; ++i) {
        repeated = std::move(repeated) + texts;
    }
    return repeated;
}

#endif
