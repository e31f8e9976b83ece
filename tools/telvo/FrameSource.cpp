#include "FrameSource.h"

#include "BlockReader.h"
#include "ToolError.h"

#include "TelvoDll.h"

#include <string>
#include <utility>

namespace telvo
{

namespace
{

/// A frame that is asked for by itself costs a round trip; in the same time the camera sends so
/// many bytes.
constexpr std::uint64_t kRoundTripBytes = std::uint64_t{1} << 20;

class BlockFrames : public FrameSource
{
  public:
    BlockFrames(const CameraSession& camera, const Recording& recording, FrameSelection selection,
                const std::stop_token& cancel)
        : mReader(camera,
                  {.sequence = recording.sequence,
                   .first = selection.first,
                   .count = (selection.count - 1) * selection.every + 1},
                  recording.info.frameSize(), cancel),
          mFrameSize(recording.info.frameSize()),
          mEvery(selection.every),
          mNext(selection.first)
    {
    }

    std::optional<RecordedFrame> next() override
    {
        while (mSkip * mFrameSize >= mBlock.size()) {
            mSkip -= mBlock.size() / mFrameSize;
            mBlock = mReader.next();
            if (mBlock.empty()) {
                return std::nullopt;
            }
        }
        const auto bytes = mBlock.subspan(mSkip * mFrameSize, mFrameSize);
        const RecordedFrame frame{mNext, bytes};
        mSkip += mEvery;
        mNext += mEvery;
        return frame;
    }

  private:
    BlockReader mReader;
    std::size_t mFrameSize;
    std::uint32_t mEvery;
    std::uint32_t mNext;                  // its number
    std::span<const std::uint8_t> mBlock; // empty: none read yet
    std::size_t mSkip = 0;                // frames in the block before the next one
};

class SingleFrames : public FrameSource
{
  public:
    SingleFrames(const CameraSession& camera, const RecordingInfo& info, FrameSelection selection,
                 std::stop_token cancel)
        : mCamera(camera), mInfo(info), mLeft(selection), mCancel(std::move(cancel))
    {
    }

    std::optional<RecordedFrame> next() override
    {
        if (mLeft.count == 0) {
            return std::nullopt;
        }
        if (mCancel.stop_requested()) {
            throw Failure("cancelled");
        }
        const RecordedFrame frame{mLeft.first, readFrame(mCamera, mInfo, mLeft.first)};
        mLeft.first += mLeft.every;
        --mLeft.count;
        return frame;
    }

  private:
    const CameraSession& mCamera;
    const RecordingInfo mInfo;
    FrameSelection mLeft;
    const std::stop_token mCancel;
};

} // namespace

std::unique_ptr<FrameSource> openFrames(const CameraSession& camera, const Recording& recording,
                                        FrameSelection selection, const std::stop_token& cancel)
{
    const std::uint64_t dropped =
        std::uint64_t{selection.every - 1} * recording.info.frameSize(); // for each one taken
    if (dropped > kRoundTripBytes) {
        return std::make_unique<SingleFrames>(camera, recording.info, selection, cancel);
    }
    return std::make_unique<BlockFrames>(camera, recording, selection, cancel);
}

std::span<const std::uint8_t> readFrame(const CameraSession& camera, const RecordingInfo& info,
                                        std::uint32_t number)
{
    std::uint64_t header = 0;
    std::uint8_t flags = 0;
    std::uint8_t extra = 0;
    const std::uint8_t* const frame =
        expGetFramePointer(number, &header, &flags, &extra, camera.id());
    if (frame == nullptr) {
        camera.fail("the camera does not deliver frame " + std::to_string(number) +
                    " ('telvo log' shows why)");
    }
    return {frame, info.frameSize()};
}

} // namespace telvo
