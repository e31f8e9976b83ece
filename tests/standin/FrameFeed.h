#ifndef TELVO_TESTS_STANDIN_FRAMEFEED_H
#define TELVO_TESTS_STANDIN_FRAMEFEED_H

#include "PvResult.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <vector>

/// The deliveries that retrievals take, in order. Tests feed it, before or while the library
/// retrieves; one pipeline or stream takes from it at a time. All members from any thread.
class FrameFeed
{
  public:
    using Code = PvResult::Code;
    using Bytes = std::vector<std::uint8_t>;

    struct Delivery {
        Code retrieval = Code::Ok; // not Ok: no buffer
        Code operation = Code::Ok;
        Bytes bytes; // copied to the buffer's start, cut at its size
    };

    /// A complete frame.
    void feedFrame(Bytes bytes);
    /// A buffer whose block ended in this way ("internal error").
    void feedError(Code operation, Bytes bytes = {});
    /// No buffer: the retrieval itself fails ("external error"). For a retrieval with a limit,
    /// feedFailure(Code::Timeout) stands for a time in which nothing came.
    void feedFailure(Code retrieval);

    /// Waits until all was taken and a retrieval without limit waits for more, so that whatever
    /// the library does about the last delivery has been done. False after 10 seconds.
    [[nodiscard]] bool waitUntilDrained();

    // --- for PvPipeline and PvStream ------------------------------------------------------------

    void start();
    /// Retrievals fail with ABORTED until the next start.
    void stop();
    /// The next delivery; waits for one until stop.
    Delivery takeWaiting();
    /// The next delivery, if there is one.
    std::optional<Delivery> takeNow();

  private:
    void feed(Delivery delivery);

    std::mutex mMutex;
    std::condition_variable mChanged;
    std::deque<Delivery> mDeliveries;
    bool mStopped = true;
    int mWaiting = 0;
};

#endif
