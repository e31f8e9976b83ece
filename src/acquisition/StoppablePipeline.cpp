#include "StoppablePipeline.h"

StoppablePipeline::StoppablePipeline(PvStream* stream, std::uint32_t bufferSize)
    : mPipeline(std::make_unique<PvPipeline>(stream))
{
    mPipeline->SetBufferSize(bufferSize);
}

PvResult StoppablePipeline::setBufferCount(std::uint32_t count)
{
    return mPipeline->SetBufferCount(count);
}

void StoppablePipeline::start()
{
    const std::lock_guard lock(mLock);
    (void)mPipeline->Start();
    mRunning = true;
}

PvResult StoppablePipeline::retrieve(PvBuffer** buffer, std::uint32_t timeout,
                                     PvResult* operationResult)
{
    return mPipeline->RetrieveNextBuffer(buffer, timeout, operationResult);
}

void StoppablePipeline::release(PvBuffer* buffer)
{
    (void)mPipeline->ReleaseBuffer(buffer);
}

void StoppablePipeline::wake()
{
    const std::lock_guard lock(mLock);
    stopIfRunning();
}

void StoppablePipeline::close()
{
    const std::lock_guard lock(mLock);
    stopIfRunning();
    mPipeline.reset();
}

void StoppablePipeline::stopIfRunning()
{
    if (mRunning) {
        (void)mPipeline->Stop();
        mRunning = false;
    }
}
