#include "DirectLine.h"

#include <algorithm>
#include <utility>

namespace gige::control
{

bool DirectLine::send(wire::ByteView datagram, const net::Endpoint& /*destination*/)
{
    const auto answers = mModel.answersTo({datagram.begin(), datagram.end()});
    const std::lock_guard lock(mLock);
    Clock::TimePoint time = mClock.now();
    if (!mArrivals.empty()) {
        time = std::max(time, mArrivals.back().time);
    }
    for (const FakeAnswer& answer : answers) {
        time += answer.delay;
        if (!answer.datagram.empty()) {
            mArrivals.push_back({time, answer.datagram, sourceOf(answer)});
        }
    }
    return true;
}

net::Received DirectLine::receive(std::span<std::uint8_t> buffer, Clock::TimePoint until)
{
    std::unique_lock lock(mLock);
    for (;;) {
        if (mIsWoken) {
            return {.status = net::ReceiveStatus::Woken};
        }
        const Clock::TimePoint next = mArrivals.empty() ? until : mArrivals.front().time;
        if (!mArrivals.empty() && next <= mClock.now()) {
            const Arrival arrival = std::move(mArrivals.front());
            mArrivals.pop_front();
            const std::size_t size = std::min(buffer.size(), arrival.datagram.size());
            std::copy_n(arrival.datagram.begin(), size, buffer.begin());
            return {.status = net::ReceiveStatus::Data, .size = size, .source = arrival.source};
        }
        if (until <= mClock.now()) {
            return {.status = net::ReceiveStatus::TimedOut};
        }
        mClock.wait(lock, mChanged, std::min(next, until));
    }
}

void DirectLine::wake()
{
    {
        const std::lock_guard lock(mLock);
        mIsWoken = true;
        mChanged.notify_all();
    }
    mClock.leave(); // whoever waited at this line ends
}

void DirectLine::clear()
{
    const std::lock_guard lock(mLock);
    mIsWoken = false;
}

net::Endpoint DirectLine::sourceOf(const FakeAnswer& answer) const
{
    net::Endpoint source = mDevice;
    if (answer.fromOtherPort) {
        source.port = 50'000;
    } else if (answer.fromOtherAddress) {
        source.address.value += 100;
    }
    return source;
}

} // namespace gige::control
