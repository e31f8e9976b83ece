#include "StatusLine.h"

#include "Terminal.h"

#include <algorithm>
#include <cstdio>
#include <iostream>

namespace telvo
{

namespace
{

constexpr std::chrono::milliseconds kLineInterval{100};

} // namespace

StatusLine::StatusLine() : mEnabled(isTerminal(stderr)) {}

StatusLine::~StatusLine()
{
    if (mDrawn != 0) {
        std::cerr << '\r' << std::string(mDrawn, ' ') << '\r' << std::flush;
    }
}

void StatusLine::show(const std::string& text)
{
    const Clock::time_point now = Clock::now();
    if (!mEnabled || now < mNextDraw) {
        return;
    }
    mNextDraw = now + kLineInterval;
    const std::size_t wiped = mDrawn - std::min(mDrawn, text.size());
    std::cerr << '\r' << text << std::string(wiped, ' ') << std::flush;
    mDrawn = text.size() + wiped;
}

} // namespace telvo
