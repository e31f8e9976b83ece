#ifndef TELVO_SRC_GRABBER_CQUORGRABBER_H
#define TELVO_SRC_GRABBER_CQUORGRABBER_H

#include "CameraFeatures.h"
#include "CameraModel.h"
#include "ColorInformation.h"
#include "GeometryCache.h"
#include "Identity.h"
#include "ModeState.h"
#include "RecordedBlock.h"
#include "Results.h"
#include "SharedSlot.h"
#include "TelvoDll.h"
#include "TransferSettings.h"

#include "PvBuffer.h"
#include "PvDevice.h"
#include "PvSerialPortIPEngine.h"
#include "PvStream.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

class CQuorAcquisitionThread;
class CQuorReadoutThread;
class FrameExchange;
class LinkLossSink;
class Thread;

/**
 * One camera: its control link, image stream and serial line, its worker threads, and one operation
 * per thing that a host can ask of it. Each subject has its own source, named above its operations.
 *
 * Threads: the host's thread calls the operations, one at a time. The stack's thread calls
 * noteLinkLost. The worker threads call the operations of the last public section. What they
 * share is atomic (connection-lost flag, mode, geometry, transfer settings, changed callback) or
 * guards itself (mFrames, mReadoutThread, mBlock). While one thread of the host's waits for a block
 * in getRecordedFrameBlockResult, another one may abort it or stop the mode.
 *
 * Unless said otherwise operations return kSuccess or kFailure; out parameters are never null and
 * keep their value on failure.
 */
class CQuorGrabber
{
  public:
    CQuorGrabber();
    /// Disconnects: ends the worker threads, closes the stream, writes a changed user-defined name
    /// to the camera and gives the device up, unless the link was lost before.
    ~CQuorGrabber();
    CQuorGrabber(const CQuorGrabber&) = delete;
    CQuorGrabber& operator=(const CQuorGrabber&) = delete;

    // grabber/Connection.cpp
    /// @return kFailure, 0 connected, 1 connected and the camera is copying to its flash card
    std::int32_t connect(const char* macAddress, const char* ipAddress, bool ipConfigurationValid,
                         const TelvoConnectionSettings& settings);
    bool isConnected() const { return mDevice.IsConnected(); }
    void setChangedCallback(TelvoChangedCallback callback) { mChangedCallback = callback; }
    void setDataAvailableCallback(TelvoDataAvailableCallback callback)
    {
        mDataAvailableCallback = callback;
    }

    // grabber/LinkLost.cpp: the stack's thread
    /// @return what the host has to be told with; null: nothing, or it was told before
    TelvoChangedCallback noteLinkLost();

    // grabber/Initialization.cpp
    /// @return kFailure link lost, -2 the camera's user set had to be prepared, 0, 1 attached to a
    /// running recording
    std::int32_t initialize(const TelvoConnectionSettings& settings);
    bool isMultiSequenceModeAvailable() const { return mIsMultiSequenceAvailable; }

    // grabber/Identification.cpp
    /// @return 0, -2 empty key, -3 unknown key
    std::int32_t getParam(const char* key, char* result, std::uint32_t resultSize) const;

    // grabber/ModelDetection.cpp
    /// @return the camera type, 0 to 3
    std::int32_t checkCameraType(const char* modelName);
    /// What the last check found.
    const CameraModel& cameraModel() const { return mModel; }
    /// Reads the sensor's size; in its place the type's own where the camera does not say.
    /// @return the camera type, 0 to 3
    std::int32_t getUsedCameraType(std::uint8_t* caseFlag, std::int32_t* maxWidth,
                                   std::int32_t* maxHeight);

    // features/ImageTiming.cpp
    std::int32_t setExposureTime(std::int32_t value);
    std::int32_t getExposureTime(std::int32_t* minimum, std::int32_t* maximum, std::int32_t* value);
    std::int32_t setFramerate(std::int32_t value);
    std::int32_t getFramerate(std::int32_t* minimum, std::int32_t* maximum, std::int32_t* value);
    std::int32_t setBlacklevel(std::int32_t value);
    std::int32_t getBlacklevel(std::int32_t* minimum, std::int32_t* maximum, std::int32_t* value);
    std::int32_t setDigitalGain(double value);
    std::int32_t getDigitalGain(double* minimum, double* maximum, double* value);
    std::int32_t setTrailerCounter(std::int32_t value);
    /// @return also kNotAvailable
    std::int32_t getTrailerCounter(std::int32_t* minimum, std::int32_t* maximum,
                                   std::int32_t* value);
    /// The temperature becomes 0 when the read fails.
    std::int32_t getTemperature(std::int32_t* value);

    // features/ImageGeometry.cpp
    /// In/out: the value clamped into the camera's limits.
    std::int32_t setCurrentWidth(std::int32_t* value);
    std::int32_t setCurrentHeight(std::int32_t* value);
    std::int32_t setOffsetX(std::int32_t* value);
    std::int32_t setOffsetY(std::int32_t* value);
    std::int32_t getOffsetX(std::int32_t* value);
    std::int32_t getOffsetY(std::int32_t* value);
    /// @return the value, or kFailure
    std::int32_t getCurrentWidth();
    std::int32_t getCurrentHeight();
    std::int32_t getMaxWidth();
    std::int32_t getMaxHeight();

    // features/TriggerFeatures.cpp
    std::int32_t enableExternalTrigger(bool enable);
    std::int32_t isExternalTriggerEnabled(std::uint8_t* enabled);
    std::int32_t setExternalTriggerPolarity(std::int32_t polarity);
    std::int32_t getExternalTriggerPolarity(std::int32_t* polarity);
    std::int32_t enableSyncIn(bool enable);
    std::int32_t isSyncInEnabled(std::uint8_t* enabled);
    std::int32_t setSyncInPolarity(std::int32_t polarity);
    std::int32_t getSyncInPolarity(std::int32_t* polarity);
    std::int32_t setSyncOut(std::int32_t output);
    std::int32_t getSyncOut(std::int32_t* output);
    std::int32_t setSyncARMPolarity(std::int32_t polarity);
    std::int32_t getSyncARMPolarity(std::int32_t* polarity);

    // features/CaptureFeatures.cpp
    std::int32_t enableDecimationMode(bool enable);
    std::int32_t isDecimationModeEnabled(std::uint8_t* enabled);
    std::int32_t enableRecordStandby(bool enable);
    std::int32_t isRecordStandbyEnabled(std::uint8_t* enabled);
    std::int32_t setMultipleSlopeMode(std::int32_t mode);
    std::int32_t getMultipleSlopeMode(std::int32_t* mode);
    std::int32_t setMultipleSlopeDual(std::int32_t value);
    std::int32_t getMultipleSlopeDual(std::int32_t* minimum, std::int32_t* maximum,
                                      std::int32_t* value);
    std::int32_t setMultipleSlopeTriple(std::int32_t value);
    std::int32_t getMultipleSlopeTriple(std::int32_t* minimum, std::int32_t* maximum,
                                        std::int32_t* value);
    std::int32_t setRecordBurstCnt(std::int32_t value);
    std::int32_t getRecordBurstCnt(std::int32_t* minimum, std::int32_t* maximum,
                                   std::int32_t* value);
    std::int32_t setRecordWhileTrigger(bool enable);
    std::int32_t getRecordWhileTrigger(std::uint8_t* enabled);

    // features/TriggerWindow.cpp
    std::int32_t enableFrameTrigger(bool enable);
    std::int32_t isFrameTriggerEnabled(std::uint8_t* enabled);
    std::int32_t enableTriggerWindow(bool enable);
    std::int32_t isImageVantoAvailable(std::uint8_t* available);
    std::int32_t setFrameTrigger(std::int32_t top, std::int32_t left, std::int32_t width,
                                 std::int32_t height, std::int32_t releaseCondition,
                                 std::int32_t threshold);
    std::int32_t getFrameTrigger(std::int32_t* top, std::int32_t* left, std::int32_t* width,
                                 std::int32_t* height, std::int32_t* releaseCondition,
                                 std::int32_t* threshold);
    std::int32_t updateTriggerValues(std::int32_t releaseCondition, std::int32_t threshold);

    // features/RecordingFeatures.cpp
    std::int32_t setRecordMode(std::int32_t mode);
    std::int32_t getRecordMode(std::int32_t* mode);
    std::int32_t setNumberOfRecordSequences(std::int32_t count);
    /// @return also kNotAvailable
    std::int32_t getNumberOfRecordSequences(std::int32_t* count);
    std::int32_t getNumberOfAllRecordedFrames(std::int32_t* count);
    std::int32_t getNumberOfRecordedFramesPerSequence(std::int32_t* count);
    std::int32_t getLastRecordDimensions(std::int32_t* width, std::int32_t* height);
    std::int32_t setRecordAtPowerOnState(bool enable);
    std::int32_t getRecordAtPowerOnState(std::uint8_t* enabled);
    std::int32_t isRecordAtPowerOnAvailable(std::uint8_t* available);
    std::int32_t setIRIGBState(bool enable);
    std::int32_t getIRIGBState(std::uint8_t* enabled);
    std::int32_t isIRIGBAvailable(std::uint8_t* available);

    // features/FlashCard.cpp
    std::int32_t isFlashCardAvailable(std::uint8_t* available);
    std::int32_t startWriteToFlash();
    std::int32_t stopWriteToFlash();
    std::int32_t enableFlashWriteAfterRecordStop(bool enable);
    std::int32_t isFlashWriteAfterRecordStopEnabled(std::uint8_t* enabled);

    // features/UserSets.cpp
    std::int32_t saveUserSet();

    // features/DataWords.cpp
    /// @param index  0 to 3: "Data00" to "Data03"
    std::int32_t setCustomData(std::int32_t index, std::int32_t value);
    std::int32_t getCustomData(std::int32_t index, std::int32_t* value);
    /// The host's own number, kept in "Data03".
    std::int32_t setCustomInformation(std::int32_t value) { return setCustomData(3, value); }
    std::int32_t getCustomInformation(std::int32_t* value) { return getCustomData(3, value); }
    std::int32_t setColorInformation(double first, double second, double third);
    std::int32_t getColorInformation(std::uint8_t* isColorCamera, double* first, double* second,
                                     double* third) const;
    /// The name reaches the camera at disconnect.
    std::int32_t setUserDefinedName(const char* name);

    // features/StreamParameters.cpp
    std::int32_t setStreamParameter(const char* name, std::int32_t value);
    std::int32_t getStreamParameter(const char* name, std::int32_t* value);
    std::int32_t setPackageSize(std::int32_t value);
    std::int32_t getPackageSize(std::int32_t* value);
    /// Of the link and of the camera.
    std::int32_t setHeartbeatTimeout(std::int32_t value);
    std::int32_t showGEVParams();
    std::int32_t showStreamParams();

    // acquisition/ModeControl.cpp and beside it
    std::int32_t startLiveMode();
    /// @param isAttaching  the camera is recording already and must not be disturbed
    std::int32_t startRecordMode(bool isAttaching);
    /// @return also 2 (camera copies to its flash card), 3 (record standby)
    std::int32_t stopCurrentMode();
    std::int32_t abortRecording();
    std::int32_t pauseLiveMode(bool pause);
    std::int32_t startPlaybackMode();
    std::int32_t isTrailerRecordingActive(std::uint8_t* active);
    std::int32_t isStateFlashWrite(std::uint8_t* flashWrite);
    std::int32_t isStateIdle(std::uint8_t* idle);
    /// Looks "CameraState" up by name while its handle is unbound.
    /// @param state  out: a CameraState value; -1 on failure
    std::int32_t getCameraState(std::int32_t* state);

    // acquisition: newest live image; pointers are valid until the next successful fetch
    const std::uint8_t* getPreviewImage(std::uint8_t* status, std::uint8_t* last);
    const std::uint8_t* getSingleImage(std::uint32_t* result, std::uint32_t* flag,
                                       std::uint8_t* status, std::uint8_t* last);
    /// @return frames since recording started; 0 without an acquisition thread
    std::int32_t getCurrentNumberOfImages();

    // acquisition: recorded sequences
    std::int32_t getCurrentRecordingSequence(std::int32_t* sequence);
    std::int32_t getMaxFramesPerSequence(std::int32_t* count);
    /// In/out: the sequence clamped into the camera's limits.
    std::int32_t setCurrentStreamSequence(std::int32_t* sequence);
    std::int32_t getRecordInfo(std::int32_t* offsetX, std::int32_t* offsetY, std::int32_t* width,
                               std::int32_t* height, std::int64_t* frameCount,
                               std::int64_t* reserved);
    const std::uint8_t* getRecordInfoFramePointer(std::uint32_t* width, std::uint32_t* height,
                                                  std::uint32_t* recordMode,
                                                  std::uint32_t* sequences);
    const std::uint8_t* getFramePointer(std::int64_t frame, std::uint64_t* header,
                                        std::uint8_t* flags, std::uint8_t* extra);

    // acquisition: recorded frames in blocks
    std::int32_t startFrameBlockTransfer();
    std::int32_t getFrameBlockSize(std::uint32_t* frames) const;
    /// @return also 1 (link lost)
    std::int32_t getRecordedFrameBlock(std::uint32_t sequence, std::uint32_t firstFrame,
                                       std::uint32_t frameCount);
    const std::uint8_t* getRecordedFrameBlockResult(std::int64_t* frames, std::uint32_t* status);
    const std::uint8_t* getRecordedFrameBlockInfo(std::uint32_t index, std::uint64_t* header,
                                                  std::uint8_t* flags, std::uint8_t* extra) const;
    std::int32_t abortCurrentFrameBlockRequest();

    // acquisition: serial line
    std::int32_t readData(std::uint8_t* buffer, std::uint32_t* count);
    std::int32_t writeData(const std::uint8_t* data, std::uint32_t count);

    // For the worker threads.
    PvDevice& device() { return mDevice; }
    PvStream& stream() { return mStream; }
    PvSerialPortIPEngine& serialPort() { return mSerialPort; }
    const CameraFeatures& features() const { return mFeatures; }
    const TransferSettings& transfer() const { return mTransfer; }
    bool isConnectionLost() const { return mIsConnectionLost; }
    /// Puts an image into the frame exchange, unless the mode is block transfer or playback.
    void putLiveFrame(std::span<const std::uint8_t> image);
    /// Drops what the camera has sent over the serial line. @return always 0
    std::int32_t flushSerialPort();
    // features/LinkPacing.cpp
    std::int32_t setInterPacketDelay(std::int32_t value); ///< "GevSCPD"; pauses 100 ms
    std::int32_t SetOutputDatarate(std::int32_t value);   ///< "InternalDataRate", clamped to 0..15
    std::int32_t GetOutputDatarate(std::int32_t* value);

  private:
    static constexpr std::uint32_t kStreamChannel = 0;

    // grabber/CQuorGrabber.cpp
    void releaseDevice();
    void releaseSingleImageBuffer();
    /// Replaces the single image buffer by one of `size` bytes and logs the size. There is none
    /// afterwards for a size of 0 or without memory.
    void allocateSingleImageBuffer(std::uint32_t size);

    // grabber/Connection.cpp
    /// The texts become those of the camera that the user chose, if they left the choice open.
    bool connectDevice(PvString& macAddress, PvString& ipAddress, bool ipConfigurationValid);
    bool connectByAddress(const PvString& macAddress, const PvString& ipAddress,
                          bool ipConfigurationValid);
    bool connectBySelection(PvString& macAddress, PvString& ipAddress);
    void applyPacketSize(const TelvoConnectionSettings& settings);
    bool openStream(const PvString& ipAddress);
    void executeAckEnable();

    // grabber/Initialization.cpp
    void applyTransferSettings(const TelvoConnectionSettings& settings, bool isUsingHostSettings);
    /// @return whether the camera is recording
    bool stopUnlessRecording();
    void applyStreamSettings(const TelvoConnectionSettings& settings, bool isUsingHostSettings);
    void detectColorCamera();
    void readColorFactors();
    void readMultiSequenceFlag();
    void prepareSingleImageBuffer();
    void attachToRecording();
    void enterPlayback();

    // grabber/Identification.cpp
    void readStreamAddresses();
    void readIdentity();

    // features/UserSets.cpp
    std::int32_t getUserSetSelection(std::int32_t* isUserSet1);
    std::int32_t getUserSetDefaultSelection(std::int32_t* isUserSet1);
    std::int32_t setUserSetSelection();
    std::int32_t setUserSetDefaultSelection(bool isUserSet1);
    /// @return 0 when the camera starts with user set 1, else prepares it and returns kFailure
    std::int32_t checkUserSetSelection();
    void saveFullFrameUserSet();

    // features/DataWords.cpp
    std::int32_t writeUserDefinedName();

    // acquisition
    /// Whether the commands are there that begin and end what a mode does: nothing is begun that
    /// no stop could end. Not before the first initialisation.
    bool canAcquire() const;
    bool canRecord() const;
    std::int32_t stopPlaybackMode();
    std::int32_t changeAquisitionSource(Mode mode);
    std::int32_t prepareRecording();
    std::int32_t stopWithoutCamera();
    std::int32_t stopLive();
    std::int32_t stopBlockTransfer();
    std::int32_t stopRecord();
    std::int32_t leaveRecordInFlashWrite();
    bool hasCameraState() const;
    /// Wait, without limit, for the camera or for the loss of its link; not for a camera that has
    /// no state to tell.
    void waitForFlashWrite();
    void waitForIdleCamera();

    // acquisition/WorkerThreads.cpp
    std::int32_t startAcquisitionThread(std::int32_t recordFlag);
    /// Stop a worker thread if it runs (at most 5000 ms) and delete it.
    void endAcquisitionThread();
    void endReadoutThread();
    void endThread(std::shared_ptr<Thread> thread);
    /// Ends the workers that an earlier start has left, and frees what they filled.
    void clearEarlierMode();
    /// Frees the live images and ends the collection of a block, which stays until the next start.
    void releaseImageBuffers();

    // acquisition/PreviewImage.cpp
    /// @return the newest image with memory for the present geometry; empty without one
    std::span<const std::uint8_t> takeLiveFrame();

    // acquisition: recorded frames
    /// Whether the stream is a mode's, so that no other may queue a buffer in it.
    bool isStreamInUse() const;
    /// Makes the single image buffer hold an image of the present geometry at least.
    /// @return false: it must not or cannot be read into
    bool reserveSingleImageBuffer();
    bool readInfoFrame();
    bool readSingleFrame(std::int64_t frame);
    void raiseCurrentInterPacketDelay();
    std::int32_t startReadoutThread(std::uint32_t frameSize);
    std::shared_ptr<CQuorReadoutThread> runningReadoutThread() const;
    /// Makes the block hold so many images of the present geometry. @return false: it cannot
    bool holdsFrames(RecordedBlock& block, std::int32_t frames) const;
    /// Waits for the request's end and copies its frames, with memory for the present geometry
    /// behind them. @return a RequestResult
    std::int32_t collectBlock(CQuorReadoutThread& thread,
                              const std::shared_ptr<RecordedBlock>& block, std::int32_t* frames);

    std::int32_t openSerialPort();

    // Members die in reverse order: serial line, stream and device first.
    std::atomic<bool> mIsConnectionLost = false;
    std::atomic<TelvoChangedCallback> mChangedCallback = nullptr;
    TelvoDataAvailableCallback mDataAvailableCallback = nullptr; // the library never calls it
    SharedSlot<CQuorReadoutThread> mReadoutThread;
    Identity mIdentity;
    bool mIsUserNameChanged = false; // by the host since initialisation
    ColorInformation mColor;
    CameraModel mModel;
    GeometryCache mGeometry;
    TransferSettings mTransfer;
    ModeState mMode;
    SharedSlot<RecordedBlock> mBlock;             // empty outside a block transfer
    std::shared_ptr<RecordedBlock> mStoppedBlock; // the host may read on in it until the next start
    bool mIsMultiSequenceAvailable = false;
    std::unique_ptr<FrameExchange> mFrames;       // never null between construction and destruction
    std::unique_ptr<PvBuffer> mSingleImageBuffer; // null before initialisation
    std::unique_ptr<CQuorAcquisitionThread> mAcquisitionThread; // null unless live or recording
    PvDevice mDevice;
    PvStream mStream;
    PvSerialPortIPEngine mSerialPort;
    CameraFeatures mFeatures{mDevice};
    std::shared_ptr<LinkLossSink> mLinkLossSink; // never null
    // Workers that did not end in time. They use this object until they have.
    std::vector<std::shared_ptr<Thread>> mOverdueThreads;
};

#endif
