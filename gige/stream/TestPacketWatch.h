#ifndef TELVO_GIGE_STREAM_TESTPACKETWATCH_H
#define TELVO_GIGE_STREAM_TESTPACKETWATCH_H

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <optional>

namespace gige::stream
{

/// Hands test packets over: note() receiving thread, wait() any thread; mLock guards all members.
class TestPacketWatch
{
  public:
    /// @param size  bytes of the UDP payload
    void note(std::size_t size);

    /// Waits for a test packet of just this size; one that came since the last wait counts too,
    /// since the device may send it before the host looks.
    bool wait(std::size_t size, std::chrono::milliseconds timeout);

  private:
    std::mutex mLock;
    std::condition_variable mArrived;
    std::optional<std::size_t> mLastSize; // not yet waited for
};

} // namespace gige::stream

#endif
