#ifndef TELVO_GIGE_PV_PVSTREAMIMPL_H
#define TELVO_GIGE_PV_PVSTREAMIMPL_H

#include "PvStream.h"
#include "StreamParameters.h"
#include "StreamReceiver.h"

#include <memory>
#include <mutex>

/// Threads: any. mLock guards the receiver's pointer only: whoever uses the receiver holds a share
/// of it, so that closing the stream under a waiting retrieval is safe.
class PvStreamBase::Impl
{
  public:
    PvResult open(const PvString& deviceAddress, std::uint16_t localPort, std::uint32_t channel,
                  const PvString& localAddress);
    void close();
    /// Null while the stream is closed.
    std::shared_ptr<gige::stream::StreamReceiver> receiver() const;
    StreamParameters& parameters() { return mParameters; }

    /// Waits for a completed buffer.
    /// @param timeout  milliseconds; 0xFFFFFFFF: "RequestTimeout"
    /// @param wakes    wake count from which on a wake ends the wait
    PvResult retrieve(gige::stream::CompletedBuffers& completed, std::uint64_t wakes,
                      std::uint32_t timeout, PvBuffer** buffer, PvResult* operationResult);

  private:
    mutable std::mutex mLock;
    std::shared_ptr<gige::stream::StreamReceiver> mReceiver;
    StreamParameters mParameters{[this] { return receiver(); }};
};

#endif
