#ifndef TELVO_TESTS_SRC_ACQUISITION_MODETEST_H
#define TELVO_TESTS_SRC_ACQUISITION_MODETEST_H

#include "GrabberTest.h"

#include <string>

// Calls that several operations make, for the default settings: delay 2000, data rate 3.
inline const Texts kStopPlayback{"log Stopping PlaybackMode.", "AcquisitionStop.Execute",
                                 "PvStream.AbortQueuedBuffers", "log PlaybackMode stopped."};
inline const Texts kLiveSource{"AcquisitionSource.SetValue Live",
                               "log -- GEN changeAquisitionSource: Live"};
inline const Texts kMemorySource{"AcquisitionSource.SetValue Memory",
                                 "log -- GEN changeAquisitionSource: Memory"};
inline const Texts kPacing{"Get GevSCPD",
                           "GevSCPD.SetValue 2000",
                           "Sleep 100",
                           "log -- GEN setInterPacketDelay 2000",
                           "Get InternalDataRate",
                           "InternalDataRate.IsAvailable",
                           "log -- GEN SetOutputDatarate Value: 3",
                           "InternalDataRate.SetValue 3"};
inline const Texts kStartPlayback =
    Texts{"log Starting PlaybackMode!", "AcquisitionStop.Execute", "PvStream.FlushPacketQueue"} +
    kPacing + Texts{"AcquisitionStart.Execute", "log PlaybackMode started!"};

/// One poll of the camera's state while a stop waits.
inline const Texts kPoll{"Sleep 500", "CameraState.GetValue"};

/// The pipeline of an acquisition thread is made.
inline Texts pipelineOf(const std::string& bufferSize, const std::string& bufferCount,
                        const std::string& label = "PvPipeline")
{
    return {"PvStream.FlushPacketQueue", label + ".SetBufferSize " + bufferSize,
            label + ".SetBufferCount " + bufferCount};
}

/// An initialised camera in playback mode, to be brought into other modes.
class ModeTest : public InitializedGrabberTest
{
  protected:
    void useImageSize(std::int64_t width, std::int64_t height)
    {
        s.camera().integer("Width").value(width);
        s.camera().integer("Height").value(height);
        rebind();
    }

    void startLive()
    {
        ASSERT_EQ(expStartLiveMode(kCamera), 0);
        settle();
        s.forget();
    }

    void startRecord()
    {
        ASSERT_EQ(expStartRecordMode(kCamera), 0);
        settle();
        s.forget();
    }

    /// Waits until the worker has handled all that was fed and waits for more.
    void settle() { ASSERT_TRUE(s.pipelineFeed().waitUntilDrained()); }

    void setCameraState(const std::string& state)
    {
        s.camera().enumeration("CameraState").value(state);
    }
};

#endif
