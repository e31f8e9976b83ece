#ifndef TELVO_ACQUISITION_CQUORREADOUTTHREAD_H
#define TELVO_ACQUISITION_CQUORREADOUTTHREAD_H

#include "FrameRequester.h"
#include "PipelineDrain.h"
#include "ReadoutRequest.h"
#include "StoppablePipeline.h"
#include "Thread.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

class CQuorGrabber;

/**
 * Reads recorded frames back, a block of them per request. Stream errors are answered by draining
 * what is still on its way, pacing the camera and asking for the whole block again, without limit.
 *
 * Threads: initialize() comes before the body runs; the host requests, waits and reads the block;
 * abortRequest() may come from any thread. mRequest guards itself; mSendLock serialises the sending
 * of requests, which host and body both do; mBlockLock guards the block; the rest is the body's.
 */
class CQuorReadoutThread final : public Thread
{
  public:
    CQuorReadoutThread() = default;
    ~CQuorReadoutThread() override;
    CQuorReadoutThread(const CQuorReadoutThread&) = delete;
    CQuorReadoutThread& operator=(const CQuorReadoutThread&) = delete;

    /**
     * Starts the pipeline and the camera's acquisition.
     * @param grabber      borrowed for the thread's life
     * @param width        pixels; a frame has width * height bytes, not 0
     * @param blockSize    bytes of a block
     * @param readoutMode  1: requests go over the serial line if it is open, else through features
     * @return 0, -1 stream not open, -2 the pipeline refuses the buffer count
     */
    std::int32_t initialize(CQuorGrabber* grabber, std::uint32_t width, std::uint32_t height,
                            std::uint32_t blockSize, std::int32_t readoutMode);

    DWORD Function() override;

    /// Asks the camera for the frames from `first` to `last`, which ends any request before. When
    /// the serial line fails, through features, and so for the rest of this thread's life.
    /// @return 0 or -1
    std::int32_t requestFrames(std::int32_t first, std::int32_t last);
    void abortRequest();
    /**
     * Waits, without limit, until the request is complete or aborted or the thread ends. Once per
     * request: with none to wait for the result is -1 at once.
     * @param framesAcquired  out; untouched for a request aborted before the call
     * @return a RequestResult
     */
    std::int32_t waitForResult(std::int32_t* framesAcquired);

    /// Calls `read` with the block, which does not change meanwhile.
    void readBlock(const std::function<void(std::span<const std::uint8_t>)>& read);

  private:
    void wake() override;
    bool sendRequest(const FrameRange& range);
    bool sendNewRequest(const FrameRange& range);
    void repeatRequest();

    /// Answers an error of the stream, or gives the request up.
    template <typename Answer>
    void answer(Answer giveAnswer);
    void prepareLink();
    void handleFrame(PvBuffer& buffer);
    void storeFrame(PvBuffer& buffer, std::int32_t index);
    void handleFrameError(PvBuffer& buffer, const PvResult& error);
    void handleRetrievalError(const PvResult& error);
    void keepBack(PvBuffer& buffer);
    void paceCamera();
    void raiseDataRate();
    void sendInterPacketDelay(std::int32_t delay);
    Drained drain(const LogText<std::int32_t>& pausing);
    void completeRequest();

    CQuorGrabber* mGrabber = nullptr;
    std::unique_ptr<StoppablePipeline> mPipeline;
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
    std::int32_t mInterPacketDelay = 0;  // as last sent
    std::int32_t mDataRate = 0;          // as last sent
};

#endif
