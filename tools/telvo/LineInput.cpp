#include "LineInput.h"

#include "CancelFlag.h"
#include "Terminal.h"

#include <chrono>
#include <iostream>

namespace telvo
{

namespace
{

constexpr std::chrono::milliseconds kCancelPoll{100};

} // namespace

std::optional<std::string> LineInput::takeLine()
{
    const std::size_t end = mRead.find('\n');
    if (end == std::string::npos && (!mEnded || mRead.empty())) {
        return std::nullopt;
    }
    std::string line = mRead.substr(0, end);
    mRead.erase(0, end == std::string::npos ? end : end + 1);
    return line;
}

std::optional<std::string> LineInput::next(const std::string& prompt)
{
    std::cerr << prompt << std::flush;
    const CancelFlag cancel;
    while (!cancel.isSet()) {
        if (auto line = takeLine()) {
            return line;
        }
        if (mEnded) {
            return std::nullopt;
        }
        const auto bytes = readInput(kCancelPoll);
        mEnded = !bytes;
        mRead += bytes.value_or("");
    }
    return std::nullopt;
}

} // namespace telvo
