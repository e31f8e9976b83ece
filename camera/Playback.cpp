#include "Playback.h"

namespace camera
{
namespace
{

constexpr std::size_t kMostRequests = 64; // that wait to be sent

} // namespace

void Playback::start()
{
    mRunning = true;
    mRequests.clear();
}

void Playback::stop()
{
    mRunning = false;
    mRequests.clear();
}

bool Playback::accepts() const
{
    return mRunning && mRequests.size() < kMostRequests;
}

Playback::Status Playback::requestInfo()
{
    if (!accepts()) {
        return Status::AccessDenied;
    }
    mRequests.push_back({.info = true});
    return Status::Success;
}

Playback::Status Playback::requestFrame(std::uint32_t sequence, std::uint32_t number)
{
    if (!accepts()) {
        return Status::AccessDenied;
    }
    if (!mRecorder.frame(sequence, number)) {
        return Status::InvalidParameter;
    }
    mRequests.push_back({.sequence = sequence, .next = number, .last = number});
    return Status::Success;
}

Playback::Status Playback::requestRange(std::uint32_t sequence, std::uint32_t first,
                                        std::uint32_t last)
{
    if (!mRunning) {
        return Status::AccessDenied;
    }
    if (first > last || !mRecorder.frame(sequence, last)) {
        return Status::InvalidParameter;
    }
    mRequests.clear();
    mRequests.push_back({.sequence = sequence, .next = first, .last = last});
    return Status::Success;
}

std::optional<Playback::Picture> Playback::next()
{
    while (!mRequests.empty()) {
        Request& request = mRequests.front();
        if (request.info) {
            mRequests.pop_front();
            return Picture{};
        }
        const auto frame = mRecorder.frame(request.sequence, request.next);
        const Picture picture{.frame = frame, .position = request.position++};
        if (!frame || request.next++ == request.last) {
            mRequests.pop_front();
        }
        if (frame) {
            return picture;
        }
    }
    return std::nullopt;
}

} // namespace camera
