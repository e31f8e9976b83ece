#ifndef TELVO_SRC_ACQUISITION_RECORDEDFRAMES_H
#define TELVO_SRC_ACQUISITION_RECORDEDFRAMES_H

#include "CameraSettings.h"
#include "FrameHeader.h"
#include "InfoFrame.h"
#include "ModeControl.h"
#include "SingleImageBuffer.h"

#include <cstdint>
#include <optional>

struct InfoFrameRead {
    const std::uint8_t* data; ///< the host's until the next read into the single image buffer
    InfoFrame info;
};

/// Reads one image at a time out of the camera's memory, outside the modes that use the stream.
/// Threads: the host's.
class RecordedFrames
{
  public:
    /// All are borrowed for this object's life.
    RecordedFrames(CameraSettings& camera, const ModeControl& modes, SingleImageBuffer& buffer)
        : mCamera(camera), mModes(modes), mBuffer(buffer)
    {
    }

    /// The camera's description of its recording.
    std::optional<InfoFrameRead> getRecordInfoFramePointer();
    /// A recorded frame by its number; a damaged one, at last, rather than none.
    std::optional<HeadedFrame> getFramePointer(std::int64_t frame);

  private:
    /// Makes the buffer hold an image of the present geometry at least.
    /// @return false: it must not or cannot be read into
    bool reserveBuffer();
    bool readInfoFrame();
    bool readSingleFrame(std::int64_t frame);
    void raiseInterPacketDelay();

    CameraSettings& mCamera;
    const ModeControl& mModes;
    SingleImageBuffer& mBuffer;
};

#endif
