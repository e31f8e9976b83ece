#ifndef TELVO_GIGE_PV_OPENSTREAMS_H
#define TELVO_GIGE_PV_OPENSTREAMS_H

#include "Ipv4Address.h"
#include "StreamReceiver.h"

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>

/// What a device tells a stream of itself.
struct StreamSource {
    std::uint16_t port = 0; // that it sends from; 0: not known, the stream learns it
    bool resends = true;    // it sends packets again
};

/// The open streams of this process. A device tells here from which port it sends, as soon as it
/// knows; the stream then takes packets of no other. It also tells when it is asked for pictures.
/// Threads: any; mLock guards the map. The one instance exists from its first use to the end of the
/// process.
class OpenStreams
{
  public:
    static OpenStreams& instance();

    void add(const std::shared_ptr<gige::stream::StreamReceiver>& stream);
    /// Before the stream is closed for good.
    void remove(const gige::stream::StreamReceiver& stream);
    /// @param destination  where the device sends to
    void setSource(const gige::net::Endpoint& destination, const StreamSource& source);
    /// See StreamReceiver::setAcquiring().
    void setAcquiring(const gige::net::Endpoint& destination, bool acquiring);

  private:
    /// Null: none is open there.
    std::shared_ptr<gige::stream::StreamReceiver> find(const gige::net::Endpoint& destination);

    std::mutex mLock;
    std::map<gige::net::Endpoint, std::weak_ptr<gige::stream::StreamReceiver>> mStreams;
};

#endif
