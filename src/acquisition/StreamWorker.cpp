#include "StreamWorker.h"

#include "LinkPacing.h"

StartResult StreamWorker::open(CameraLink& link, std::uint32_t frameSize, std::uint32_t bufferCount,
                               const OpenTexts& texts)
{
    mLink = &link;
    if (!link.stream.IsOpen()) {
        texts.streamNotOpen.log();
        return StartResult::Failed;
    }
    (void)link.stream.FlushPacketQueue();
    mPipeline = std::make_unique<StoppablePipeline>(&link.stream, frameSize);
    if (!mPipeline->setBufferCount(bufferCount).IsOK()) {
        texts.bufferCountRefused.log();
        return StartResult::BufferCountRefused;
    }
    return StartResult::Started;
}

void StreamWorker::takeImages()
{
    while (!isStopRequested()) {
        PvBuffer* buffer = nullptr;
        PvResult operation;
        const PvResult retrieval = mPipeline->retrieve(&buffer, INFINITE, &operation);
        bool isHandled = true;
        if (!retrieval.IsOK()) {
            isHandled = attempt([&] { handleRetrievalError(retrieval); });
        } else if (!operation.IsOK()) {
            isHandled = attempt([&] { handleImageError(*buffer, operation); });
        } else {
            handleImage(*buffer);
        }
        if (!isHandled) {
            giveUp();
        }
        finishTurn();
    }
    mPipeline->close();
}

void StreamWorker::wake()
{
    if (mPipeline != nullptr) {
        mPipeline->wake();
    }
}

void StreamWorker::sendInterPacketDelay(std::int32_t delay)
{
    mInterPacketDelay = delay;
    (void)setInterPacketDelay(*mLink, delay);
}

void StreamWorker::sendDataRate(std::int32_t rate)
{
    mDataRate = rate;
    (void)setOutputDatarate(*mLink, rate);
}
