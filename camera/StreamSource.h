#ifndef TELVO_CAMERA_STREAMSOURCE_H
#define TELVO_CAMERA_STREAMSOURCE_H

#include "LiveSource.h"
#include "Playback.h"
#include "Settings.h"
#include "StreamOrder.h"

namespace camera
{

/// Which block goes out next on stream channel 0: of live images, of a running recording, or of
/// what was asked of the last one. Not thread-safe.
class StreamSource
{
  public:
    /// All must outlive it.
    StreamSource(const CameraOptions& options, const Settings& settings, const Recorder& recorder,
                 LiveSource& live, Playback& playback);

    [[nodiscard]] const StreamChannel& channel() const { return mChannel; }
    /// A channel that opens begins with block 1.
    void setChannel(const StreamChannel& channel);
    void closeChannel() { mChannel.destination = {}; }

    [[nodiscard]] std::optional<StreamOrder> nextBlock(CameraTime now);
    /// When time alone brings the next block, after nextBlock() gave none.
    [[nodiscard]] CameraTime nextExposure() const;
    /// The id after the newest block's.
    [[nodiscard]] std::uint64_t takeBlockId();

  private:
    [[nodiscard]] std::optional<StreamOrder> liveBlock(CameraTime now);
    [[nodiscard]] std::optional<StreamOrder> previewBlock();
    [[nodiscard]] std::optional<StreamOrder> playbackBlock();
    [[nodiscard]] StreamOrder infoBlock();
    [[nodiscard]] StreamOrder block(const SceneView& view, const FrameStamp& stamp);

    const CameraOptions& mOptions;
    const Settings& mSettings;
    const Recorder& mRecorder;
    LiveSource& mLive;
    Playback& mPlayback;
    StreamChannel mChannel;
    std::uint64_t mLastBlockId = 0;
};

} // namespace camera

#endif
