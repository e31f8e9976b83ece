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

void OpenStreams::setSource(const gige::net::Endpoint& destination, const StreamSource& source)
{
    if (const auto stream = find(destination)) {
        stream->setDevicePort(source.port);
        stream->setDeviceResends(source.resends);
    }
}

void OpenStreams::setAcquiring(const gige::net::Endpoint& destination, bool acquiring)
{
    if (const auto stream = find(destination)) {
        stream->setAcquiring(acquiring);
    }
}

std::shared_ptr<gige::stream::StreamReceiver>
OpenStreams::find(const gige::net::Endpoint& destination)
{
    const std::lock_guard lock(mLock);
    const auto found = mStreams.find(destination);
    return found == mStreams.end() ? nullptr : found->second.lock();
}
