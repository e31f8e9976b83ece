#include "PvPipeline.h"

#include "PvBufferImpl.h"
#include "PvStreamImpl.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>
#include <vector>

using gige::stream::StreamReceiver;

/// Threads: one retrieves and releases, any may stop. mLock guards the buffers and the receiver; a
/// waiting retrieval does not hold it.
class PvPipeline::Impl
{
  public:
    explicit Impl(PvStream* stream) : mStream(stream) {}

    void setBufferSize(std::uint32_t size) { mBufferSize = size; }
    PvResult setBufferCount(std::uint32_t count);
    PvResult start();
    void stop();
    PvResult retrieve(PvBuffer** buffer, std::uint32_t timeout, PvResult* operationResult);
    PvResult release(PvBuffer* buffer);

  private:
    static constexpr std::uint32_t kDefaultBufferCount = 16;

    bool allocateBuffers();
    bool owns(const PvBuffer* buffer) const;

    PvStream* const mStream;
    std::atomic<std::uint32_t> mBufferSize{0};

    std::mutex mLock;
    std::uint32_t mBufferCount = kDefaultBufferCount;
    std::vector<std::unique_ptr<PvBuffer>> mBuffers;
    std::shared_ptr<StreamReceiver> mReceiver; // null unless started
};

PvResult PvPipeline::Impl::setBufferCount(std::uint32_t count)
{
    if (count == 0) {
        return PvResult::Code::InvalidParameter;
    }
    const std::lock_guard lock(mLock);
    if (mReceiver != nullptr) {
        return PvResult::Code::StateError;
    }
    mBufferCount = count;
    // Here already, and not at the start only: here a host still hears that there is no memory.
    return allocateBuffers() ? PvResult::Code::Ok : PvResult::Code::NotEnoughMemory;
}

bool PvPipeline::Impl::allocateBuffers()
{
    mBuffers.resize(mBufferCount);
    for (auto& buffer : mBuffers) {
        if (buffer == nullptr) {
            buffer = std::make_unique<PvBuffer>();
        }
        if (buffer->GetSize() != mBufferSize && !buffer->Alloc(mBufferSize).IsOK()) {
            return false;
        }
    }
    return true;
}

PvResult PvPipeline::Impl::start()
{
    const std::lock_guard lock(mLock);
    if (mReceiver != nullptr) {
        return PvResult::Code::StateError;
    }
    auto receiver = mStream->impl().receiver();
    if (receiver == nullptr) {
        return PvResult::Code::NotConnected;
    }
    if (!allocateBuffers()) {
        return PvResult::Code::NotEnoughMemory;
    }
    for (const auto& buffer : mBuffers) {
        receiver->queue(buffer->impl());
    }
    mReceiver = std::move(receiver);
    return PvResult::Code::Ok;
}

void PvPipeline::Impl::stop()
{
    const std::lock_guard lock(mLock);
    if (mReceiver == nullptr) {
        return;
    }
    const auto stopped = std::exchange(mReceiver, nullptr);
    // First, so that a waiting retrieval ends empty-handed.
    stopped->wakeRetrievals();
    stopped->abortQueued();
    // Takes the buffers back out of the stream, so that a later user of it does not get them.
    while (stopped->retrieve(std::chrono::milliseconds(0)).buffer != nullptr) {
    }
}

PvResult PvPipeline::Impl::retrieve(PvBuffer** buffer, std::uint32_t timeout,
                                    PvResult* operationResult)
{
    std::shared_ptr<StreamReceiver> receiver;
    std::uint64_t wakes = 0;
    {
        const std::lock_guard lock(mLock);
        if (mReceiver == nullptr) {
            return PvResult::Code::StateError;
        }
        receiver = mReceiver;
        // Read under the lock: the wake of any later stop() ends the wait.
        wakes = receiver->wakeCount();
    }
    return mStream->impl().retrieve(*receiver, wakes, timeout, buffer, operationResult);
}

bool PvPipeline::Impl::owns(const PvBuffer* buffer) const
{
    return std::any_of(mBuffers.begin(), mBuffers.end(),
                       [buffer](const auto& own) { return own.get() == buffer; });
}

PvResult PvPipeline::Impl::release(PvBuffer* buffer)
{
    const std::lock_guard lock(mLock);
    if (!owns(buffer)) {
        return PvResult::Code::InvalidParameter;
    }
    // After a stop the buffer simply rests with the pipeline until the next start.
    if (mReceiver != nullptr && !mReceiver->queue(buffer->impl())) {
        return PvResult::Code::StateError;
    }
    return PvResult::Code::Ok;
}

PvPipeline::PvPipeline(PvStream* stream) : mImpl(std::make_unique<Impl>(stream)) {}

PvPipeline::~PvPipeline()
{
    mImpl->stop();
}

void PvPipeline::SetBufferSize(std::uint32_t size)
{
    mImpl->setBufferSize(size);
}

PvResult PvPipeline::SetBufferCount(std::uint32_t count)
{
    return mImpl->setBufferCount(count);
}

PvResult PvPipeline::Start()
{
    return mImpl->start();
}

PvResult PvPipeline::Stop()
{
    mImpl->stop();
    return PvResult::Code::Ok;
}

PvResult PvPipeline::RetrieveNextBuffer(PvBuffer** buffer, std::uint32_t timeout,
                                        PvResult* operationResult)
{
    return mImpl->retrieve(buffer, timeout, operationResult);
}

PvResult PvPipeline::ReleaseBuffer(PvBuffer* buffer)
{
    return mImpl->release(buffer);
}
