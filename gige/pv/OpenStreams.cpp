#include "OpenStreams.h"

#include <cstddef>
#include <new>

OpenStreams& OpenStreams::instance()
{
    // Never destroyed: a host may close its streams in an exit handler that runs after the
    // destructors of our statics.
    alignas(OpenStreams) static std::byte memory[sizeof(OpenStreams)];
    static auto* const streams = new (memory) OpenStreams;
    return *streams;
}

void OpenStreams::add(const std::shared_ptr<gige::stream::StreamReceiver>& stream)
{
    const std::lock_guard lock(mLock);
    mStreams[stream->localEndpoint()] = stream;
}

void OpenStreams::remove(const gige::stream::StreamReceiver& stream)
{
    const std::lock_guard lock(mLock);
    const auto found = mStreams.find(stream.localEndpoint());
    if (found != mStreams.end() && found->second.lock().get() == &stream) {
        mStreams.erase(found);
    }
}

void OpenStreams::setDevicePort(const gige::net::Endpoint& destination, std::uint16_t devicePort)
{
    std::shared_ptr<gige::stream::StreamReceiver> stream;
    {
        const std::lock_guard lock(mLock);
        const auto found = mStreams.find(destination);
        if (found != mStreams.end()) {
            stream = found->second.lock();
        }
    }
    if (stream != nullptr) {
        stream->setDevicePort(devicePort);
    }
}
