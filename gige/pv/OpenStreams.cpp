#include "OpenStreams.h"

OpenStreams& OpenStreams::instance()
{
    static OpenStreams streams;
    return streams;
}

void OpenStreams::add(const std::shared_ptr<gige::stream::StreamReceiver>& stream)
{
    const std::lock_guard lock(mLock);
    std::erase_if(mStreams, [](const auto& entry) { return entry.second.expired(); });
    mStreams[stream->localEndpoint()] = stream;
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
