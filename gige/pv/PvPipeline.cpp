#include "PvPipeline.h"

#include "PvBufferImpl.h"
#include "PvStreamImpl.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <unordered_set>
#include <utility>
#include <vector>

using gige::stream::StreamReceiver;

/// Threads: one retrieves and releases, any may stop. lock guards the buffers and the receiver; a
/// waiting retrieval does not hold it.
class PvPipeline::Impl
{
  public:
    static constexpr std::uint32_t kDefaultBufferCount = 16;

    explicit Impl(PvStream* borrowed) : stream(borrowed) {}

    bool allocateBuffers();
    void stop();

    PvStream* const stream;
    std::atomic<std::uint32_t> bufferSize{0};

    std::mutex lock;
    std::uint32_t bufferCount = kDefaultBufferCount;
    std::vector<std::unique_ptr<PvBuffer>> buffers;
    std::unordered_set<const PvBuffer*> own;  // the same, for a host that releases any
    std::shared_ptr<StreamReceiver> receiver; // null unless started
};

bool PvPipeline::Impl::allocateBuffers()
{
    buffers.resize(bufferCount);
    own.clear();
    for (auto& buffer : buffers) {
        if (buffer == nullptr) {
            buffer = std::make_unique<PvBuffer>();
        }
        own.insert(buffer.get());
    }
    return std::ranges::all_of(buffers, [size = bufferSize.load()](const auto& buffer) {
        return buffer->GetSize() == size || buffer->Alloc(size).IsOK();
    });
}

void PvPipeline::Impl::stop()
{
    const std::lock_guard guard(lock);
    if (receiver == nullptr) {
        return;
    }
    const auto stopped = std::exchange(receiver, nullptr);
    // First, so that a waiting retrieval ends empty-handed.
    stopped->completed().wakeRetrievals();
    stopped->abortQueued();
    // Takes the buffers back out of the stream, so that a later user of it does not get them.
    while (stopped->completed().retrieve(std::chrono::milliseconds(0)).buffer != nullptr) {
    }
}

PvPipeline::PvPipeline(PvStream* stream) : mImpl(std::make_unique<Impl>(stream)) {}

PvPipeline::~PvPipeline()
{
    mImpl->stop();
}

void PvPipeline::SetBufferSize(std::uint32_t size)
{
    mImpl->bufferSize = size;
}

PvResult PvPipeline::SetBufferCount(std::uint32_t count)
{
    if (count == 0) {
        return PvResult::Code::InvalidParameter;
    }
    const std::lock_guard guard(mImpl->lock);
    if (mImpl->receiver != nullptr) {
        return PvResult::Code::StateError;
    }
    mImpl->bufferCount = count;
    // Here already, and not at the start only: here a host still hears that there is no memory.
    return mImpl->allocateBuffers() ? PvResult::Code::Ok : PvResult::Code::NotEnoughMemory;
}

PvResult PvPipeline::Start()
{
    const std::lock_guard guard(mImpl->lock);
    if (mImpl->receiver != nullptr) {
        return PvResult::Code::StateError;
    }
    auto receiver = mImpl->stream->impl().receiver();
    if (receiver == nullptr) {
        return PvResult::Code::NotConnected;
    }
    if (!mImpl->allocateBuffers()) {
        return PvResult::Code::NotEnoughMemory;
    }
    for (const auto& buffer : mImpl->buffers) {
        receiver->queue(buffer->impl());
    }
    mImpl->receiver = std::move(receiver);
    return PvResult::Code::Ok;
}

PvResult PvPipeline::Stop()
{
    mImpl->stop();
    return PvResult::Code::Ok;
}

PvResult PvPipeline::RetrieveNextBuffer(PvBuffer** buffer, std::uint32_t timeout,
                                        PvResult* operationResult)
{
    std::shared_ptr<StreamReceiver> receiver;
    std::uint64_t wakes = 0;
    {
        const std::lock_guard guard(mImpl->lock);
        if (mImpl->receiver == nullptr) {
            return PvResult::Code::StateError;
        }
        receiver = mImpl->receiver;
        // Read under the lock: the wake of any later stop() ends the wait.
        wakes = receiver->completed().wakeCount();
    }
    return mImpl->stream->impl().retrieve(receiver->completed(), wakes, timeout, buffer,
                                          operationResult);
}

PvResult PvPipeline::ReleaseBuffer(PvBuffer* buffer)
{
    const std::lock_guard guard(mImpl->lock);
    if (!mImpl->own.contains(buffer)) {
        return PvResult::Code::InvalidParameter;
    }
    // After a stop the buffer simply rests with the pipeline until the next start.
    if (mImpl->receiver != nullptr && !mImpl->receiver->queueFirst(buffer->impl())) {
        return PvResult::Code::StateError;
    }
    return PvResult::Code::Ok;
}
