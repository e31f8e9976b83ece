#include "PvBuffer.h"
#include "PvPipeline.h"
#include "PvStream.h"
#include "StandIn.h"

#include <algorithm>
#include <atomic>
#include <deque>
#include <mutex>

class PvBuffer::Impl
{
  public:
    std::vector<std::uint8_t> memory;

    void fill(const FrameFeed::Bytes& bytes)
    {
        std::copy_n(bytes.begin(), std::min(bytes.size(), memory.size()), memory.begin());
    }
};

PvBuffer::PvBuffer() : mImpl(std::make_unique<Impl>()) {}

PvBuffer::~PvBuffer() = default;

PvResult PvBuffer::Alloc(std::uint32_t size)
{
    const PvResult result = StandIn::current().call("PvBuffer.Alloc", std::to_string(size));
    mImpl->memory.assign(result.IsOK() ? size : 0, 0);
    return result;
}

void PvBuffer::Free()
{
    StandIn::current().record(StandIn::Kind::Call, "PvBuffer.Free");
    mImpl->memory.clear();
}

std::uint8_t* PvBuffer::GetDataPointer()
{
    return mImpl->memory.empty() ? nullptr : mImpl->memory.data();
}

std::uint32_t PvBuffer::GetSize() const
{
    return static_cast<std::uint32_t>(mImpl->memory.size());
}

class PvStreamBase::Impl
{
  public:
    std::string label = StandIn::current().nextLabel("PvStream");
    std::atomic<bool> open{false};
    std::mutex mutex; // guards the rest
    std::deque<PvBuffer*> queued;
    bool aborted = false;
};

PvStreamBase::PvStreamBase() : mImpl(std::make_unique<Impl>()) {}

PvStreamBase::~PvStreamBase()
{
    StandIn::current().record(StandIn::Kind::Query, mImpl->label + " destroyed");
}

PvResult PvStreamBase::Open(const PvString& deviceAddress, std::uint16_t localPort,
                            std::uint32_t channel, const PvString& localAddress)
{
    const std::string local = localAddress.GetAscii();
    const PvResult result = StandIn::current().call(
        mImpl->label + ".Open", std::string(deviceAddress.GetAscii()) + " " +
                                    std::to_string(localPort) + " " + std::to_string(channel) +
                                    " " + (local.empty() ? "''" : local));
    mImpl->open = result.IsOK();
    return result;
}

PvResult PvStreamBase::Close()
{
    mImpl->open = false;
    return StandIn::current().call(mImpl->label + ".Close");
}

bool PvStreamBase::IsOpen() const
{
    StandIn::current().record(StandIn::Kind::Query, mImpl->label + ".IsOpen");
    return mImpl->open && !StandIn::current().streamsDropped();
}

PvString PvStreamBase::GetLocalIPAddress() const
{
    StandIn::current().record(StandIn::Kind::Query, mImpl->label + ".GetLocalIPAddress");
    return "127.0.0.9";
}

std::uint16_t PvStreamBase::GetLocalPort() const
{
    StandIn::current().record(StandIn::Kind::Query, mImpl->label + ".GetLocalPort");
    return 50123;
}

PvGenParameterArray* PvStream::GetParameters()
{
    return &StandIn::current().stream();
}

PvResult PvStream::QueueBuffer(PvBuffer* buffer)
{
    const PvResult result =
        StandIn::current().call(impl().label + ".QueueBuffer", {}, Code::Pending);
    if (result.IsPending()) {
        const std::lock_guard lock(impl().mutex);
        impl().queued.push_back(buffer);
    }
    return result;
}

PvResult PvStream::RetrieveBuffer(PvBuffer** buffer, PvResult* operationResult,
                                  std::uint32_t timeout)
{
    StandIn& standIn = StandIn::current();
    const std::string limit = timeout == 0xFFFFFFFF ? "INFINITE" : std::to_string(timeout);
    const PvResult scripted = standIn.call(impl().label + ".RetrieveBuffer", limit);
    const std::lock_guard lock(impl().mutex);
    if (!scripted.IsOK()) {
        return scripted;
    }
    if (impl().queued.empty()) {
        return Code::Timeout;
    }
    FrameFeed::Delivery delivery{.retrieval = Code::Ok, .operation = Code::Aborted, .bytes = {}};
    if (!impl().aborted) {
        delivery = standIn.streamFeed().takeNow().value_or(
            FrameFeed::Delivery{.retrieval = Code::Timeout, .operation = Code::Ok, .bytes = {}});
    }
    if (delivery.retrieval != Code::Ok) {
        return delivery.retrieval;
    }
    *buffer = impl().queued.front();
    impl().queued.pop_front();
    impl().aborted = impl().aborted && !impl().queued.empty();
    (*buffer)->impl().fill(delivery.bytes);
    *operationResult = delivery.operation;
    return Code::Ok;
}

PvResult PvStream::AbortQueuedBuffers()
{
    const PvResult result = StandIn::current().call(impl().label + ".AbortQueuedBuffers");
    const std::lock_guard lock(impl().mutex);
    impl().aborted = !impl().queued.empty();
    return result;
}

PvResult PvStream::FlushPacketQueue()
{
    return StandIn::current().call(impl().label + ".FlushPacketQueue");
}

class PvPipeline::Impl
{
  public:
    std::string label = StandIn::current().nextLabel("PvPipeline");
    std::mutex mutex; // guards the rest
    std::uint32_t bufferSize = 0;
    std::vector<std::unique_ptr<PvBuffer>> handedOut;
};

PvPipeline::PvPipeline(PvStream* /*stream*/) : mImpl(std::make_unique<Impl>()) {}

PvPipeline::~PvPipeline()
{
    StandIn::current().pipelineFeed().stop();
}

void PvPipeline::SetBufferSize(std::uint32_t size)
{
    StandIn::current().record(StandIn::Kind::Call,
                              mImpl->label + ".SetBufferSize " + std::to_string(size));
    const std::lock_guard lock(mImpl->mutex);
    mImpl->bufferSize = size;
}

PvResult PvPipeline::SetBufferCount(std::uint32_t count)
{
    return StandIn::current().call(mImpl->label + ".SetBufferCount", std::to_string(count),
                                   count == 0 ? Code::InvalidParameter : Code::Ok);
}

PvResult PvPipeline::Start()
{
    StandIn::current().pipelineFeed().start();
    return StandIn::current().call(mImpl->label + ".Start");
}

PvResult PvPipeline::Stop()
{
    const PvResult result = StandIn::current().call(mImpl->label + ".Stop");
    StandIn::current().pipelineFeed().stop();
    return result;
}

PvResult PvPipeline::RetrieveNextBuffer(PvBuffer** buffer, std::uint32_t timeout,
                                        PvResult* operationResult)
{
    StandIn& standIn = StandIn::current();
    const bool unlimited = timeout == 0xFFFFFFFF;
    standIn.record(StandIn::Kind::Call, mImpl->label + ".RetrieveNextBuffer " +
                                            (unlimited ? "INFINITE" : std::to_string(timeout)));
    const FrameFeed::Delivery delivery =
        unlimited ? standIn.pipelineFeed().takeWaiting()
                  : standIn.pipelineFeed().takeNow().value_or(FrameFeed::Delivery{
                        .retrieval = Code::Timeout, .operation = Code::Ok, .bytes = {}});
    if (delivery.retrieval != Code::Ok) {
        return delivery.retrieval;
    }
    auto filled = std::make_unique<PvBuffer>();
    const std::lock_guard lock(mImpl->mutex);
    filled->impl().memory.assign(mImpl->bufferSize, 0);
    filled->impl().fill(delivery.bytes);
    *buffer = filled.get();
    *operationResult = delivery.operation;
    mImpl->handedOut.push_back(std::move(filled));
    return Code::Ok;
}

PvResult PvPipeline::ReleaseBuffer(PvBuffer* buffer)
{
    const PvResult result = StandIn::current().call(mImpl->label + ".ReleaseBuffer");
    const std::lock_guard lock(mImpl->mutex);
    const auto released = std::erase_if(
        mImpl->handedOut, [=](const auto& handedOut) { return handedOut.get() == buffer; });
    return released == 1 ? result : PvResult(Code::InvalidParameter);
}
