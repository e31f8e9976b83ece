#ifndef TELVO_SRC_ACQUISITION_CQUORREADOUTTHREAD_H
#define TELVO_SRC_ACQUISITION_CQUORREADOUTTHREAD_H

#include "FrameRequester.h"
#include "PipelineDrain.h"
#include "ReadoutRequest.h"
#include "StreamWorker.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

/**
 * Reads recorded frames back, a block of them per request. Stream errors are answered by draining
 * what is still on its way, pacing the camera and asking for the whole block again, without limit.
 *
 * Threads: initialize() comes before the body runs; the host requests, waits and reads the block;
 * abortRequest() may come from any thread. mRequest guards itself; mSendLock serialises the sending
 * of requests, which host and body both do; mBlockLock guards the block; the rest is the body's.
 */
class CQuorReadoutThread final : public StreamWorker
{
  public:
    CQuorReadoutThread() = default;
    ~CQuorReadoutThread() override;
    CQuorReadoutThread(const CQuorReadoutThread&) = delete;
    CQuorReadoutThread& operator=(const CQuorReadoutThread&) = delete;

    /**
     * Starts the pipeline and the camera's acquisition.
     * @param link         borrowed for the thread's life
     * @param width        pixels; a frame has width * height bytes, not 0
     * @param blockSize    bytes of a block
     * @param readoutMode  1: requests go over the serial line if it is open, else through features
     */
    StartResult initialize(CameraLink& link, std::uint32_t width, std::uint32_t height,
                           std::uint32_t blockSize, std::int32_t readoutMode);

    DWORD Function() override;

    /// Asks the camera for the frames, which ends any request before. When
    /// the serial line fails, through features, and so for the rest of this thread's life.
    Outcome requestFrames(const FrameRange& range);
    void abortRequest();
    /// Waits, without limit, until the request is complete or aborted or the thread ends. Once per
    /// request: with none to wait for the result is ThreadEnded at once.
    ReadoutRequest::Ending waitForResult();
    /// Calls `read` with the block, which does not change meanwhile.
    void readBlock(const std::function<void(std::span<const std::uint8_t>)>& read);

  private:
    void wake() override;
    bool sendRequest(const FrameRange& range);
    bool sendNewRequest(const FrameRange& range);
    void repeatRequest();

    void handleImage(PvBuffer& buffer) override;
    void handleImageError(PvBuffer& buffer, const PvResult& error) override;
    void handleRetrievalError(const PvResult& error) override;
    /// Nobody repeats the request any more, so the host must not wait for it.
    void giveUp() override { abortRequest(); }
    void finishTurn() override { completeRequest(); }
    void prepareLink();
    void storeFrame(PvBuffer& buffer, std::int32_t index);
    void keepBack(PvBuffer& buffer);
    void paceCamera();
    void raiseDataRate();
    Drained drain(const LogText<std::int32_t>& pausing);
    void completeRequest();

    std::uint32_t mBufferCount = 0;   // of the pipeline
    std::vector<PvBuffer*> mKeptBack; // of the pipeline's buffers, those that carried an error
    std::uint32_t mFrameSize = 0;     // bytes

    std::mutex mBlockLock;
    std::vector<std::uint8_t> mBlock;

    std::mutex mSendLock;
    FrameRequester mRequester;
    ReadoutRequest mRequest;

    std::int32_t mConsecutiveErrors = 0; // since a request was completed or the data rate raised
    bool mHasFrameError = false;         // since the last retrieval error that was answered
};

#endif
