#ifndef TELVO_SRC_ACQUISITION_FRAMEREQUESTER_H
#define TELVO_SRC_ACQUISITION_FRAMEREQUESTER_H

#include "CameraLink.h"

#include <atomic>
#include <cstdint>
#include <string>

/// Frame numbers of a recording, both included.
struct FrameRange {
    std::int32_t first;
    std::int32_t last;
};

/**
 * The serial command that has the camera send a range of frames: register 07b0 takes the last
 * number, 07a8 the first, 07f8 without a value starts the transfer. Numbers are eight upper-case
 * hexadecimal digits, so the command has 37 characters.
 */
std::string serialFrameRequest(const FrameRange& range);

/**
 * Asks the camera for ranges of recorded frames, over its serial line or through features.
 *
 * Threads: bind() first; send() one thread at a time; giveUpSerial() and isSerial() any.
 */
class FrameRequester
{
  public:
    /// Binds the features, clears the range and chooses the way.
    /// @param link         borrowed for this object's life
    /// @param readoutMode  1: over the serial line if it is open, else through features
    void bind(CameraLink& link, std::int32_t readoutMode);

    /// False when requests go through features and the camera lacks them.
    bool canSend() const;
    [[nodiscard]] bool send(const FrameRange& range);
    void startAcquisition();

    bool isSerial() const { return mIsSerial; }
    /// Requests go through features from now on, for the rest of this object's life.
    void giveUpSerial() { mIsSerial = false; }

  private:
    bool canSendFeatures() const;
    bool hasRange() const;
    bool sendSerial(const FrameRange& range);
    bool sendFeatures(const FrameRange& range);
    bool setRange(const FrameRange& range);

    CameraLink* mLink = nullptr;
    std::atomic<bool> mIsSerial{false};
    PvGenInteger* mStartNumber = nullptr;
    PvGenInteger* mEndNumber = nullptr;
    PvGenCommand* mSequenceStart = nullptr;
    PvGenCommand* mAcquisitionStart = nullptr;
};

#endif
