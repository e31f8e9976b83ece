#ifndef TELVO_SRC_ACQUISITION_READOUTREQUEST_H
#define TELVO_SRC_ACQUISITION_READOUTREQUEST_H

#include "FrameRequester.h"
#include "UniqueHandle.h"

#include <cstdint>
#include <mutex>
#include <optional>

/// How a request for recorded frames ended.
enum class RequestResult : std::int32_t { Complete = 0, Aborted = 1, ThreadEnded = -1 };

/**
 * The current request for recorded frames: how many are ordered, how many have come, how it ended.
 *
 * Each decision is made under mLock, for the request that is current then: what is left of an
 * earlier one neither completes the current one nor takes its completion away. The event only
 * wakes; what has happened, the awakened reads under the lock. So a signal may come late, or once
 * too often.
 *
 * Threads: begin() to accepted() whoever sends, one at a time; progress() to signal() the readout
 * thread; abort() and end() any; await() the host. mLock guards all but the event.
 */
class ReadoutRequest
{
  public:
    /// How far the frames of a sending have come.
    struct Progress {
        std::uint64_t sending; // number of the sending
        std::int32_t acquired;
        std::int32_t ordered;
    };

    struct Ending {
        RequestResult result;
        /// Frames that have come; nothing when the end came before the wait.
        std::optional<std::int32_t> acquired;
        std::int32_t ordered;

        /// More frames than ordered: there is no telling which of them are the request's.
        bool isExcess() const
        {
            return result == RequestResult::Complete && acquired.value_or(0) > ordered;
        }
    };

    ReadoutRequest();
    /// False without the system's leave for an event: nothing could end a wait.
    bool canAwait() const { return static_cast<bool>(mChanged); }

    /// A new request: forgotten is how the last one ended, and that it was aborted.
    void begin();
    /// The range is about to be sent, for the first time or again: counting begins anew.
    void start(const FrameRange& range);
    /// The camera has not taken what was sent.
    void refuse();
    /// The camera has taken the new request, whose result can now be awaited.
    void accept(const FrameRange& range);
    /// The last request that the camera took, to be repeated.
    std::optional<FrameRange> accepted() const;

    Progress progress() const;
    /// A frame has come, unless counting has begun anew since `progress`: then it is none of those.
    void count(const Progress& progress);
    /// The request cannot be completed until it is sent again. @return whether it was under way
    bool interrupt();
    /// Decides whether the request is complete; signal() tells a waiting host.
    /// @return its frames when it has just become so
    std::optional<std::int32_t> complete();
    void signal();

    /// Ends the request, and keeps it ended whatever else comes until the next begin().
    void abort();
    /// No request will be answered any more.
    void end();

    /// Waits, without limit, for the end of the request; handed out once, unless it is an abort or
    /// an excess of frames. With no request to wait for the result is ThreadEnded at once.
    Ending await();

  private:
    std::optional<RequestResult> result() const;
    Ending ending(RequestResult result, std::optional<std::int32_t> acquired) const;
    std::optional<Ending> endingBeforeWait() const;
    std::optional<Ending> endingAfterSignal();
    std::optional<Ending> endingAfterFailedWait() const;

    mutable std::mutex mLock;
    std::uint64_t mSending = 0;
    std::int32_t mOrdered = -1; // before the first request every frame is in excess
    std::int32_t mAcquired = 0;
    std::optional<FrameRange> mAccepted;
    bool mIsPending = false; // was sent and is neither complete nor interrupted
    bool mIsComplete = false;
    bool mIsAborted = false;
    bool mIsAwaited = false; // was taken, and its result not handed out
    bool mHasEnded = false;
    UniqueHandle mChanged; // auto-reset
};

#endif
