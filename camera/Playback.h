#ifndef TELVO_CAMERA_PLAYBACK_H
#define TELVO_CAMERA_PLAYBACK_H

#include "GvcpStatus.h"
#include "Recorder.h"

#include <deque>

namespace camera
{

/// What the host asked to be sent of the recording, in the order it asked. Not thread-safe.
class Playback
{
  public:
    using Status = gige::wire::GvcpStatus;

    /// A block that was asked for.
    struct Picture {
        std::optional<FrameStamp> frame{}; ///< none: the info frame
        std::uint32_t position = 0;        ///< place in its range
        bool operator==(const Picture&) const = default;
    };

    /// recorder must outlive the playback.
    explicit Playback(const Recorder& recorder) : mRecorder(recorder) {}

    /// Nothing is taken over from before.
    void start();
    void stop();
    [[nodiscard]] bool isRunning() const { return mRunning; }

    // @return AccessDenied: not running, or too many wait; InvalidParameter: no such frame
    Status requestInfo();
    Status requestFrame(std::uint32_t sequence, std::uint32_t number);
    /// Takes the place of all that still waits: the host has given that up.
    Status requestRange(std::uint32_t sequence, std::uint32_t first, std::uint32_t last);

    /// What is to be sent next. Frames that a newer recording has replaced are passed over.
    [[nodiscard]] std::optional<Picture> next();

  private:
    struct Request {
        bool info = false;
        std::uint32_t sequence = 0;
        std::uint32_t next = 0;
        std::uint32_t last = 0;
        std::uint32_t position = 0;
    };

    [[nodiscard]] bool accepts() const;

    const Recorder& mRecorder;
    bool mRunning = false;
    std::deque<Request> mRequests;
};

} // namespace camera

#endif
