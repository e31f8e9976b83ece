#include "PvStream.h"

#include "AddressText.h"
#include "NetworkInterface.h"
#include "OpenStreams.h"
#include "PvBufferImpl.h"
#include "PvStreamImpl.h"
#include "Reasons.h"
#include "StackLog.h"
#include "StatusTranslations.h"

#include <optional>
#include <system_error>
#include <utility>

using gige::stream::CompletedBuffers;
using gige::stream::Retrieved;
using gige::stream::RetrieveStatus;
using gige::stream::StreamReceiver;

namespace
{

/// The address given, or that of the interface that reaches the device.
std::optional<gige::net::Ipv4Address> chooseLocalAddress(const PvString& localAddress,
                                                         gige::net::Ipv4Address device)
{
    if (localAddress != PvString("")) {
        return parseAddressText(localAddress);
    }
    const auto reaching = gige::net::interfaceReaching(device);
    return reaching ? std::optional(reaching->address) : std::nullopt;
}

} // namespace

PvResult PvStreamBase::Impl::open(const PvString& deviceAddress, std::uint16_t localPort,
                                  std::uint32_t channel, const PvString& localAddress)
{
    const auto device = parseAddressText(deviceAddress);
    if (!device || channel > 0xFFFF) {
        return PvResult::Code::InvalidParameter;
    }
    const auto local = chooseLocalAddress(localAddress, *device);
    if (!local) {
        return PvResult::Code::NetworkError;
    }
    const std::lock_guard lock(mLock);
    if (mReceiver != nullptr) {
        return PvResult::Code::StateError;
    }
    std::error_code error;
    std::shared_ptr<StreamReceiver> opened =
        StreamReceiver::open({.local = {.address = *local, .port = localPort},
                              .device = *device,
                              .channel = static_cast<std::uint16_t>(channel),
                              .settings = mParameters.settings(),
                              .ring = mParameters.ringUse()},
                             error);
    if (opened == nullptr) {
        gige::log::say(gige::net::toText(*device), gige::log::noStream(error.value()));
        return PvResult::Code::NetworkError;
    }
    OpenStreams::instance().add(opened);
    mReceiver = std::move(opened);
    return PvResult::Code::Ok;
}

void PvStreamBase::Impl::close()
{
    std::shared_ptr<StreamReceiver> closing;
    {
        const std::lock_guard lock(mLock);
        closing = std::exchange(mReceiver, nullptr);
    }
    if (closing != nullptr) {
        OpenStreams::instance().remove(*closing);
        closing->abortQueued();
        closing->completed().wakeRetrievals();
    }
}

std::shared_ptr<StreamReceiver> PvStreamBase::Impl::receiver() const
{
    const std::lock_guard lock(mLock);
    return mReceiver;
}

PvResult PvStreamBase::Impl::retrieve(CompletedBuffers& completed, std::uint64_t wakes,
                                      std::uint32_t timeout, PvBuffer** buffer,
                                      PvResult* operationResult)
{
    constexpr std::uint32_t kNoLimit = 0xFFFFFFFF;
    const auto limit =
        timeout == kNoLimit ? mParameters.requestTimeout() : std::chrono::milliseconds(timeout);
    const Retrieved retrieved = completed.retrieve(limit, wakes);
    switch (retrieved.status) {
    case RetrieveStatus::Buffer:
        *buffer = &PvBuffer::Impl::ownerOf(*retrieved.buffer);
        *operationResult = toPvResult(retrieved.buffer->info().result);
        return PvResult::Code::Ok;
    case RetrieveStatus::TimedOut:
        return PvResult::Code::Timeout;
    case RetrieveStatus::Woken:
        return PvResult::Code::Aborted;
    }
    return PvResult::Code::GenericError;
}

PvStreamBase::PvStreamBase() : mImpl(std::make_unique<Impl>()) {}

PvStreamBase::~PvStreamBase()
{
    mImpl->close();
}

PvResult PvStreamBase::Open(const PvString& deviceAddress, std::uint16_t localPort,
                            std::uint32_t channel, const PvString& localAddress)
{
    return mImpl->open(deviceAddress, localPort, channel, localAddress);
}

PvResult PvStreamBase::Close()
{
    mImpl->close();
    return PvResult::Code::Ok;
}

bool PvStreamBase::IsOpen() const
{
    return mImpl->receiver() != nullptr;
}

PvString PvStreamBase::GetLocalIPAddress() const
{
    const auto receiver = mImpl->receiver();
    return receiver ? PvString(gige::net::toText(receiver->localEndpoint().address)) : PvString();
}

std::uint16_t PvStreamBase::GetLocalPort() const
{
    const auto receiver = mImpl->receiver();
    return receiver ? receiver->localEndpoint().port : std::uint16_t{0};
}

PvGenParameterArray* PvStream::GetParameters()
{
    return &impl().parameters().array();
}

PvResult PvStream::QueueBuffer(PvBuffer* buffer)
{
    if (buffer == nullptr) {
        return PvResult::Code::InvalidParameter;
    }
    const auto receiver = impl().receiver();
    if (receiver == nullptr) {
        return PvResult::Code::NotConnected;
    }
    return receiver->queue(buffer->impl()) ? PvResult::Code::Pending : PvResult::Code::StateError;
}

PvResult PvStream::RetrieveBuffer(PvBuffer** buffer, PvResult* operationResult,
                                  std::uint32_t timeout)
{
    const auto receiver = impl().receiver();
    if (receiver == nullptr) {
        return PvResult::Code::NotConnected;
    }
    auto& completed = receiver->completed();
    return impl().retrieve(completed, completed.wakeCount(), timeout, buffer, operationResult);
}

PvResult PvStream::AbortQueuedBuffers()
{
    const auto receiver = impl().receiver();
    if (receiver == nullptr) {
        return PvResult::Code::NotConnected;
    }
    receiver->abortQueued();
    return PvResult::Code::Ok;
}

PvResult PvStream::FlushPacketQueue()
{
    const auto receiver = impl().receiver();
    if (receiver == nullptr) {
        return PvResult::Code::NotConnected;
    }
    receiver->flushPackets();
    return PvResult::Code::Ok;
}
