#ifndef TELVO_PLATFORM_EBUS_PVSTREAM_H
#define TELVO_PLATFORM_EBUS_PVSTREAM_H

#include "PvBuffer.h"
#include "PvGenParameterArray.h"
#include "PvResult.h"

#include <cstdint>
#include <memory>

/// The receiving end of a camera's image stream: a socket and a thread that fills queued buffers.
class PvStreamBase
{
  public:
    PvStreamBase();
    virtual ~PvStreamBase();
    PvStreamBase(const PvStreamBase&) = delete;
    PvStreamBase& operator=(const PvStreamBase&) = delete;

    /// @param deviceAddress  IP text of the camera; only its packets are accepted
    /// @param localPort      0: any free one
    /// @param channel        stream channel index of the camera
    /// @param localAddress   IP text; empty: the interface that reaches the camera
    PvResult Open(const PvString& deviceAddress, std::uint16_t localPort, std::uint32_t channel,
                  const PvString& localAddress);
    /// Aborts what is queued and ends the receiving thread.
    PvResult Close();
    bool IsOpen() const;
    PvString GetLocalIPAddress() const;
    std::uint16_t GetLocalPort() const;

    class Impl;
    /// For the stack's other classes.
    Impl& impl() const { return *mImpl; }

  private:
    std::unique_ptr<Impl> mImpl;
};

class PvStream : public PvStreamBase
{
  public:
    /// "RequestTimeout", "FirstPacketTimeout", "PacketTimeout", "DefaultImageTimeout"
    /// (milliseconds), "MaximumPendingResends", "MaximumResendRequestRetryByPacket", "PacketRing"
    /// (0: packets come by the socket only; counts when the stream is opened), and read-only
    /// statistics. There whether or not the stream is open.
    PvGenParameterArray* GetParameters();

    /// @return PENDING: queued, the stream owns it until it is retrieved; else it stays the
    /// caller's
    PvResult QueueBuffer(PvBuffer* buffer);

    /// Takes the next completed buffer.
    /// @param buffer           out: the buffer; untouched on failure
    /// @param operationResult  out: how its block ended: OK, IMAGE_ERROR, RESENDS_FAILURE,
    ///                         BUFFER_TOO_SMALL, ABORTED, TIMEOUT
    /// @param timeout          milliseconds; 0xFFFFFFFF: "RequestTimeout" applies
    /// @return TIMEOUT when none completes in time, NOT_CONNECTED when the stream is not open
    PvResult RetrieveBuffer(PvBuffer** buffer, PvResult* operationResult,
                            std::uint32_t timeout = 0xFFFFFFFF);
    /// Completes every queued buffer as ABORTED; they can still be retrieved.
    PvResult AbortQueuedBuffers();
    /// Drops packets that have been received and not yet placed.
    PvResult FlushPacketQueue();
};

#endif
