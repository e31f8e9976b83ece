/**
 * TelvoDll: control of high-speed GigE Vision cameras with recording memory. Plain C; compiles as
 * C11 and as C++20.
 *
 * Order of calls for a camera: expConnectGrabber under an id of the host's choice, the two callback
 * functions, expInitializeGrabber, then any others, at last expDisconnectGrabber.
 *
 * Results: 0 is success, -1 failure; others are named at each function. An unknown id gives -1, and
 * NULL from the six functions that return pointers, and writes to no out parameter. A null pointer
 * where text, settings or an out parameter is expected does the same. So does a call for which
 * there is no memory or no thread to be had; it can be made again when there is. Nothing is thrown.
 *
 * Numbers: camera values are 32-bit and signed inside the library, so a negative one is passed and
 * read as its unsigned counterpart. Flags are one byte, 0 or 1. Names in quotation marks are the
 * camera's features, whose units and limits are the camera's.
 *
 * Threads: functions of different cameras may be called at the same time, connecting and
 * disconnecting them too. For one camera the host calls one function at a time. The exception is
 * expGetRecordedFrameBlockResult: while one thread is in it, another may call
 * expAbortCurrentFrameBlockRequest and the functions that stop a mode (expStopLiveMode,
 * expStopRecordMode, expStopFrameBlockTransfer, expAbortRecording).
 *
 * Cameras may be disconnected up to the end of the process, in static destructors and atexit
 * handlers too, whenever those were registered.
 *
 * Image sizes: width and height are those of the camera as expInitializeGrabber, expSetWidth,
 * expSetHeight, expGetWidth and expGetHeight last gave them before the call. width * height bytes
 * lie behind every image returned, of whatever size it was taken.
 *
 * Pointers returned are the library's: read only, never freed by the host, valid as long as the
 * function says. Texts are single-byte and NUL-terminated. Pointers passed are not kept.
 *
 * How long the memory behind a returned pointer stays as it is:
 *
 *   expGetPreviewImage,            until the next call of either of them that returns an image, or
 *   expGetSingleImage              the next stop or start of a mode
 *   expGetFramePointer,            until the next call of either of them, expInitializeGrabber or
 *   expGetRecordInfoFramePointer   expStartRecordMode
 *   expGetRecordedFrameBlockResult until the next call of it, or the next start of a mode that
 *   expGetRecordedFrameBlockInfo   streams
 *   all of them                    until expDisconnectGrabber
 *
 * What a camera does, and the functions that lead from one state to another. Leave a mode before
 * you start another one.
 *
 *   unknown   --expConnectGrabber-->                connected
 *   connected --expInitializeGrabber: 0-->          playback
 *   connected --expInitializeGrabber: 1-->          recording (which was under way)
 *   connected --expInitializeGrabber: -2-->         connected: disconnect, and begin once more
 *   playback  --expStartLiveMode-->                 live
 *   live      --expStopLiveMode-->                  playback
 *   playback  --expStartRecordMode-->               recording
 *   recording --expStopRecordMode: 0-->             playback
 *   recording --expStopRecordMode: 2-->             copying to the flash card: when expIsStateIdle
 *                                                   says that it is over, expStopRecordMode again
 *   recording --expStopRecordMode: 3-->             idle, ready for the next expStartRecordMode
 *   playback  --expStartFrameBlockTransfer-->       block transfer
 *   block transfer --expStopFrameBlockTransfer-->   playback
 *   any       --link lost-->                        lost: images are NULL, a wait for a block ends,
 *                                                   expGetRecordedFrameBlock returns 1, the stop
 *                                                   functions 0; expDisconnectGrabber leads on
 *   any       --expDisconnectGrabber-->             unknown
 *
 *   live, recording   expGetPreviewImage, expGetSingleImage; recording also
 *                     expGetCurrentNumberOfImages, expAbortRecording; live expPauseLiveMode
 *   playback          expGetFramePointer, expGetRecordInfoFramePointer
 *   block transfer    expGetRecordedFrameBlock and the functions named after it
 *   any but unknown   settings, of which the camera may refuse some while it streams or records
 *
 * Log lines go to the debugger output (OutputDebugStringA); on Linux to the abstract Unix datagram
 * socket "TelvoDll.debug".
 */
#ifndef TELVO_INCLUDE_TELVODLL_H
#define TELVO_INCLUDE_TELVODLL_H

#include <assert.h> // NOLINT(modernize-deprecated-headers): this header is C as well
#include <stddef.h> // NOLINT(modernize-deprecated-headers)
#include <stdint.h> // NOLINT(modernize-deprecated-headers)

/// The version that this header belongs to. Versions with the same first two numbers are
/// compatible: a host runs with any of them, whichever it was built with.
#define TELVO_VERSION_MAJOR 0
#define TELVO_VERSION_MINOR 1
#define TELVO_VERSION_PATCH 0
#define TELVO_VERSION "0.1.0"

// On Windows the module-definition file exports the functions.
#ifdef __ELF__
#define TELVO_API __attribute__((visibility("default")))
#else
#define TELVO_API
#endif

#ifdef __cplusplus
#define TELVO_NOEXCEPT noexcept
extern "C" {
#else
#define TELVO_NOEXCEPT
#endif

// NOLINTBEGIN(modernize-use-using): this header is C as well

/**
 * Link settings, 64 bytes, little-endian. With useSettings 0 the library uses the values given in
 * brackets. Timeouts are in milliseconds; delays are values of the camera's "GevSCPD", in its unit.
 */
typedef struct TelvoConnectionSettings {
    uint8_t useSettings;              ///< @0  0: the values in brackets; else the fields below
    uint8_t reserved1[3];             ///< @1
    uint32_t packetSize;              ///< @4  bytes, 0: negotiate [1440]; read by connect alone
    uint32_t defaultInterPacketDelay; ///< @8  of live images, previews and playback [2000]
    uint32_t outputInterPacketDelay;  ///< @12 of block transfers [0]
    uint32_t firstPacketTimeout;      ///< @16 wait for a frame's first packet, 0: no limit [0]
    uint32_t packetTimeout;           ///< @20 longest gap between two packets of a frame [1000]
    uint32_t requestTimeout;          ///< @24 wait for any frame [1100]
    uint32_t defaultImageTimeout;     ///< @28 from a frame's first packet to its last [1100]
    uint32_t answerTimeout;           ///< @32 wait for the camera's answer to a command [1000]
    uint32_t heartbeatTimeout;        ///< @36 silence after which the link is lost [not written]
    uint32_t heartbeatInterval;       ///< @40 between two signs of life [not written]
    uint32_t maximumPendingResends;   ///< @44 packets, 0: no resends [0]
    uint8_t fastReadoutActive;        ///< @48 0 or 1; logged only [1]
    uint8_t reserved2[3];             ///< @49
    uint32_t requestMode; ///< @52 1: frames are requested over the serial line; else features [0]
    uint32_t outputDataRate; ///< @56 0 to 15, "InternalDataRate" [3]
    uint8_t reserved3[4];    ///< @60
} TelvoConnectionSettings;

static_assert(sizeof(TelvoConnectionSettings) == 64, "part of the interface");
static_assert(offsetof(TelvoConnectionSettings, packetSize) == 4, "part of the interface");
static_assert(offsetof(TelvoConnectionSettings, defaultInterPacketDelay) == 8,
              "part of the interface");
static_assert(offsetof(TelvoConnectionSettings, maximumPendingResends) == 44,
              "part of the interface");
static_assert(offsetof(TelvoConnectionSettings, fastReadoutActive) == 48, "part of the interface");
static_assert(offsetof(TelvoConnectionSettings, requestMode) == 52, "part of the interface");
static_assert(offsetof(TelvoConnectionSettings, outputDataRate) == 56, "part of the interface");

/// @param reason  0: the link to the camera was lost
typedef void (*TelvoChangedCallback)(int32_t reason);
/// @param reason  the host's own
typedef void (*TelvoDataAvailableCallback)(int32_t reason);

/// Bytes that the camera writes over the beginning of every frame, recorded and live: no pixels.
#define TELVO_FRAME_HEADER_SIZE 16

/// What those bytes say. Bytes 0 to 3 and 6 are the camera's own.
typedef struct TelvoFrameHeader {
    uint16_t counter; ///< @4, little-endian: counts the frames of a recording, 0 after 65535
    uint8_t flags;    ///< @7, every bit inverted, as the functions give it
    uint64_t time;    ///< @8, 7 bytes, little-endian: when the frame was exposed, in the camera's
                      ///< unit; the "header" of the functions
    uint8_t extra;    ///< @15: on the last frame of a recorded sequence not 0
} TelvoFrameHeader;

// NOLINTEND(modernize-use-using)

/// Reads a frame's header. No call into the library: it may be made anywhere, of copied frames too.
/// @param frame  its first TELVO_FRAME_HEADER_SIZE bytes
static inline TelvoFrameHeader telvoFrameHeader(const uint8_t* frame)
{
    TelvoFrameHeader header;
    int i;
    header.counter = (frame[4] | frame[5] << 8) & 0xFFFF;
    header.flags = ~frame[7] & 0xFF;
    header.time = 0;
    for (i = 14; i >= 8; --i) {
        header.time = header.time << 8 | frame[i];
    }
    header.extra = frame[15];
    return header;
}

// Connection

/**
 * Connects a camera: gives it an address if asked to, takes exclusive control of it, opens its
 * image stream on a free UDP port and, if the camera has one, its serial line.
 * @param macAddress            "02:54:45:00:00:21"; "-" separators and any case accepted. Empty:
 *                              the user chooses a camera in a window, whose addresses then count;
 *                              on Linux in a dialog on the terminal, and none without a terminal
 * @param ipAddress             "192.168.1.20"; empty: as for macAddress. The MAC address decides
 *                              which camera it is: it is looked for and controlled wherever it
 *                              answers from, which must be one address only. The IP address is the
 *                              one that the camera is given, and that its images come from
 * @param ipConfigurationValid  0: the camera is first given ipAddress with subnet mask
 *                              255.255.255.0, before each try; else it is taken as configured
 * @param settings              only useSettings and packetSize are read here; copied
 * @param cameraId              any number that is not in use; every other function finds the camera
 *                              by it
 * @return 0: connected; 1: connected, and the camera is copying a recording to its flash card; -1:
 *         null pointer, no camera answered in 6 tries 200 ms apart, the user chose none, or the
 *         stream cannot be opened; the id is unknown then. With a camera that is absent or falls
 *         silent that takes 10 s at most, and 35 s where it is first given an address
 * An id in use is not looked up: the camera connected first keeps it, and this one stays connected
 * without an id, until the process ends. Disconnect an id before you use it again.
 */
TELVO_API int32_t expConnectGrabber(const char* macAddress, const char* ipAddress,
                                    uint8_t ipConfigurationValid,
                                    const TelvoConnectionSettings* settings,
                                    int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Prepares a connected camera: applies the link settings, stops it unless it is recording, reads
 * its identity and model, checks its user set, and enters playback; a recording that runs goes on,
 * and record mode is resumed. May be called again; it repeats everything. Call it before any other
 * function except the two callback functions.
 * @param settings  copied
 * @param cameraId  the camera
 * @return 0; 1: attached to a running recording; -1: unknown id, null pointer, not connected or
 *         link lost; -2: the camera did not start with user set 1, which has now been prepared and
 *         saved: disconnect, connect and initialise once more
 * Takes about a second: 100 ms after every parameter written.
 */
TELVO_API int32_t expInitializeGrabber(const TelvoConnectionSettings* settings,
                                       int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Ends what the camera is doing for this host (waiting at most 5 s for each worker thread), writes
 * a name given with expSetUserDefinedName to the camera, gives up control and forgets the id. After
 * a lost link the camera itself is left alone. Every pointer that this id has returned becomes
 * invalid. May be called on any thread, in the changed callback too. No changed callback of this
 * connection begins afterwards; one that is running is waited for half a second at most, and may
 * go on after that.
 * @param cameraId  the camera
 * @return 0; -1: unknown id
 */
TELVO_API int32_t expDisconnectGrabber(int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets the function that is called when the link to the camera is lost, replacing any earlier one.
 * @param callback  may be null: none
 * @param cameraId  the camera
 * @return 0; -1: unknown id
 * The callback runs at most once per connection, on a thread of the library that holds no lock. It
 * may call any function, expDisconnectGrabber for its own camera too, and may wait as long as it
 * wants, even for another thread that disconnects the camera: no disconnect waits for its end. It
 * must return, not throw. What it uses has to exist until it has returned. A library that is to be
 * unloaded stays in memory until the process ends if a disconnect has left a callback behind,
 * because the callback has to return into it.
 */
TELVO_API int32_t expSetChangedCallback(TelvoChangedCallback callback,
                                        int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Stores a function for the host's own use, replacing any earlier one. The library never calls it.
 * @param callback  may be null
 * @param cameraId  the camera
 * @return 0; -1: unknown id
 */
TELVO_API int32_t expSetDataAvailableCallback(TelvoDataAvailableCallback callback,
                                              int32_t cameraId) TELVO_NOEXCEPT;

// Identity

/**
 * Reads one of the camera's identity texts, as of connect and initialise; the camera is not asked.
 * @param key         case does not matter, and the beginning of a key is enough: the first of these
 *                    that begins with it is meant: "ipAddress", "macAddress", "ipAddressNIC" (of
 *                    this host), "macAddressNIC" (the stream's destination, "GevSCDA"),
 *                    "cameraName", "manufacturer", "model", "serialNumber", "gigeVersion",
 *                    "cameraVersion" ("B1.02-F3.04-V5.06": bootloader, FPGA, controller), "memory"
 *                    (recording memory, "RecordCameraBufferSize"), "ioValues" (always empty)
 * @param result      out: NUL-terminated text of at most 49 characters; always give room for 50
 *                    bytes
 * @param resultSize  bytes of result, which are zeroed first
 * @param cameraId    the camera
 * @return 0; -1: unknown id or null pointer; -2: empty key; -3: unknown key, result is zeroed
 */
TELVO_API int32_t expGetParam(const char* key, char* result, const uint32_t* resultSize,
                              int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells whether the camera can record several sequences ("MultisequenceAvailable"), as of
 * initialise.
 * @param available  out: 0 or 1
 * @param cameraId   the camera
 * @return 0; -1: unknown id or null pointer
 */
TELVO_API int32_t expIsMultiSequenceModeAvailable(uint8_t* available,
                                                  int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells the type of the camera by its model, as of initialise, and reads its sensor's size anew.
 * NOTE: the camera id is the second parameter here.
 * @param cameraCase  out: 0 or 1, the mark within the type
 * @param cameraId    the camera
 * @param maxWidth    out: sensor width in pixels; where the camera does not say, the type's own
 *                    (types 0, 1 and 3) or -1 as unsigned (type 2)
 * @param maxHeight   out: sensor height in pixels, likewise
 * @return camera type, 0 to 3; 0 also for an unknown id; -1: null pointer
 */
TELVO_API int32_t expGetUsedCameraType(uint8_t* cameraCase, int32_t cameraId, uint32_t* maxWidth,
                                       uint32_t* maxHeight) TELVO_NOEXCEPT;

// Image and timing

/**
 * Sets the exposure time ("ExposureTimeRaw").
 * @param value     in the camera's unit; outside its limits the camera refuses
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses
 */
TELVO_API int32_t expSetExposureTime(uint32_t value, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the exposure time and its limits ("ExposureTimeRaw"), again after 500 ms, at most 4 times,
 * while the camera reports an empty range.
 * @param minimum   out: lowest value the camera takes now
 * @param maximum   out: highest value
 * @param value     out: present value
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature, a read failed once
 *         (nothing is written from then on), or the range stayed empty (the values of the last try
 *         are there)
 */
TELVO_API int32_t expGetExposureTime(uint32_t* minimum, uint32_t* maximum, uint32_t* value,
                                     int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets the frame rate ("AcquisitionFrameRateRaw"), trying at most 4 times.
 * @param value     in the camera's unit
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses four times
 */
TELVO_API int32_t expSetFrameRate(uint32_t value, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the frame rate and its limits ("AcquisitionFrameRateRaw"), again after 500 ms, at most
 * 4 times, while the camera reports an empty range.
 * @param minimum   out: lowest value the camera takes now
 * @param maximum   out: highest value
 * @param value     out: present value
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature, or no try gave a range
 *         that is not empty (the values of the last complete try are there)
 */
TELVO_API int32_t expGetFrameRate(uint32_t* minimum, uint32_t* maximum, uint32_t* value,
                                  int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets the black level ("BlackLevelRaw").
 * @param value     in the camera's unit
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses
 */
TELVO_API int32_t expSetBlacklevel(uint32_t value, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the black level and its limits ("BlackLevelRaw").
 * @param minimum   out: lowest value the camera takes now
 * @param maximum   out: highest value
 * @param value     out: present value
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails; nothing
 *         is written then
 */
TELVO_API int32_t expGetBlacklevel(uint32_t* minimum, uint32_t* maximum, uint32_t* value,
                                   int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets the gain ("GainRaw").
 * @param value     in the camera's unit; cut to a whole number toward zero, 2.9 is sent as 2
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses
 */
TELVO_API int32_t expSetGainRaw(double value, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the gain and its limits ("GainRaw"), unscaled.
 * @param minimum   out: lowest value the camera takes now
 * @param maximum   out: highest value
 * @param value     out: present value
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails; nothing
 *         is written then
 */
TELVO_API int32_t expGetGainRaw(double* minimum, double* maximum, double* value,
                                int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets the image width ("Width"). Not while images are acquired.
 * @param width     in/out: pixels; becomes the value sent, which is clamped into the camera's
 *                  limits but not rounded to its increment
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or refuses the value sent
 */
TELVO_API int32_t expSetWidth(uint32_t* width, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets the image height ("Height"). Not while images are acquired.
 * @param height    in/out: pixels; becomes the value sent, which is clamped into the camera's
 *                  limits but not rounded to its increment
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or refuses the value sent
 */
TELVO_API int32_t expSetHeight(uint32_t* height, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets the left edge of the image on the sensor ("OffsetX"). Not while images are acquired.
 * @param offsetX   in/out: pixels; becomes the value sent, which is clamped into the camera's
 *                  limits but not rounded to its increment
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or refuses the value sent
 */
TELVO_API int32_t expSetOffsetX(uint32_t* offsetX, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets the top edge of the image on the sensor ("OffsetY"). Not while images are acquired.
 * @param offsetY   in/out: pixels; becomes the value sent, which is clamped into the camera's
 *                  limits but not rounded to its increment
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or refuses the value sent
 */
TELVO_API int32_t expSetOffsetY(uint32_t* offsetY, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the image width ("Width").
 * @param width     out: pixels; -1 as unsigned when the camera lacks the feature
 * @param cameraId  the camera
 * @return 0; -1: unknown id or null pointer
 */
TELVO_API int32_t expGetWidth(uint32_t* width, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the image height ("Height").
 * @param height    out: pixels; -1 as unsigned when the camera lacks the feature
 * @param cameraId  the camera
 * @return 0; -1: unknown id or null pointer
 */
TELVO_API int32_t expGetHeight(uint32_t* height, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the position of the image on the sensor ("OffsetX", then "OffsetY").
 * @param offsetX   out: pixels from the left edge
 * @param offsetY   out: pixels from the top edge; untouched when the first read fails
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, or a read failed
 */
TELVO_API int32_t expGetOffset(uint32_t* offsetX, uint32_t* offsetY,
                               int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the camera's temperature ("Temperature").
 * @param temperature  out: in the camera's unit; 0 when the read fails, untouched when the camera
 *                     lacks the feature
 * @param cameraId     the camera
 * @return 0, whatever the camera answers; -1: unknown id or null pointer
 */
TELVO_API int32_t expGetTemperature(uint32_t* temperature, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets how many frames are recorded after the trigger ("RecordTrailer").
 * @param value     frames
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses
 */
TELVO_API int32_t expSetTrailerCounter(uint32_t value, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the number of frames recorded after the trigger and its limits ("RecordTrailer").
 * @param minimum   out: lowest value the camera takes now
 * @param maximum   out: highest value
 * @param value     out: present value
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails; nothing
 *         is written then; -2: not available in the camera's present state
 */
TELVO_API int32_t expGetTrailerCounter(uint32_t* minimum, uint32_t* maximum, uint32_t* value,
                                       int32_t cameraId) TELVO_NOEXCEPT;

// Trigger and I/O

/**
 * Switches the external trigger input on or off ("ExtTriggerEnable").
 * @param enable    0: off; else on
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses
 */
TELVO_API int32_t expEnableExternalTrigger(uint8_t enable, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells whether the external trigger input is on ("ExtTriggerEnable").
 * @param enabled   out: 0 or 1
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails; nothing
 *         is written then
 */
TELVO_API int32_t expIsExternalTriggerEnabled(uint8_t* enabled, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets the edge that triggers ("ExtTriggerPolarity").
 * @param polarity  0: "falling"; else "raising"
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses
 */
TELVO_API int32_t expSetExternalTriggerPolarity(uint32_t polarity, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the edge that triggers ("ExtTriggerPolarity").
 * @param polarity  out: 0: "falling"; 1: "raising"
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer or the camera lacks the feature (nothing is written); the
 *         read fails or gives another entry (0 is written)
 */
TELVO_API int32_t expGetExternalTriggerPolarity(uint32_t* polarity,
                                                int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Switches the synchronisation input on or off ("SyncInEnable"). At most 4 tries, 500 ms after each
 * refusal.
 * @param enable    0: off; else on
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses four times
 */
TELVO_API int32_t expEnableSyncIn(uint8_t enable, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells whether the synchronisation input is on ("SyncInEnable").
 * @param enabled   out: 0 or 1
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails; nothing
 *         is written then
 */
TELVO_API int32_t expIsSyncInEnabled(uint8_t* enabled, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets the edge of the synchronisation input ("SyncInPolarity").
 * @param polarity  0: "falling"; else "raising"
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses
 */
TELVO_API int32_t expSetSyncInPolarity(uint32_t polarity, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the edge of the synchronisation input ("SyncInPolarity").
 * @param polarity  out: 0: "falling"; 1: "raising"
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer or the camera lacks the feature (nothing is written); the
 *         read fails or gives another entry (0 is written)
 */
TELVO_API int32_t expGetSyncInPolarity(uint32_t* polarity, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets the signal on the synchronisation output ("SyncOutSelect").
 * @param output    0: "ARM"; else "SyncOut"
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses
 */
TELVO_API int32_t expSetSyncOut(uint32_t output, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the signal on the synchronisation output ("SyncOutSelect").
 * @param output    out: 0: "ARM"; 1: "SyncOut"
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer or the camera lacks the feature (nothing is written); the
 *         read fails or gives another entry (0 is written)
 */
TELVO_API int32_t expGetSyncOut(uint32_t* output, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets the polarity of the arming signal ("SyncARMPolarity").
 * @param polarity  0: "negative"; else "positive"
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses
 */
TELVO_API int32_t expSetSyncARMPolarity(uint32_t polarity, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the polarity of the arming signal ("SyncARMPolarity").
 * @param polarity  out: 0: "negative"; 1: "positive"
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer or the camera lacks the feature (nothing is written); the
 *         read fails or gives another entry (0 is written)
 */
TELVO_API int32_t expGetSyncARMPolarity(uint32_t* polarity, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Switches decimation in both directions on or off ("DecimationXY").
 * @param enable    0: off; else on
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature, does not offer it now, or refuses
 */
TELVO_API int32_t expEnableDecimationMode(uint8_t enable, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells whether decimation in both directions is on ("DecimationXY").
 * @param enabled   out: 0 or 1
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature, does not offer it now, or
 *         the read fails; nothing is written then
 */
TELVO_API int32_t expIsDecimationModeEnabled(uint8_t* enabled, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Switches record standby on or off ("RecordStandby"). In standby the camera starts the next
 * recording by itself.
 * @param enable    0: off; else on
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses
 */
TELVO_API int32_t expEnableRecordStandby(uint8_t enable, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells whether record standby is on ("RecordStandby").
 * @param enabled   out: 0 or 1
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails; nothing
 *         is written then
 */
TELVO_API int32_t expIsRecordStandbyEnabled(uint8_t* enabled, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets the shutter mode ("MultipleSlopeMode").
 * @param mode      0: "NormalShutter", 1: "DualSlope", 2: "TripleSlope"
 * @param cameraId  the camera
 * @return 0; -1: unknown id, other mode, the camera lacks the feature or refuses
 */
TELVO_API int32_t expSetMultipleSlopeMode(uint32_t mode, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the shutter mode ("MultipleSlopeMode").
 * @param mode      out: as for expSetMultipleSlopeMode; untouched for another entry
 * @param cameraId  the camera
 * @return 0, also for another entry; -1: unknown id, null pointer, the camera lacks the feature or
 *         the read fails; nothing is written then
 */
TELVO_API int32_t expGetMultipleSlopeMode(uint32_t* mode, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets the second slope of the shutter ("MultipleSlopeDualRaw").
 * @param value     in the camera's unit
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses
 */
TELVO_API int32_t expSetMultipleSlopeDual(uint32_t value, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the second slope of the shutter and its limits ("MultipleSlopeDualRaw").
 * @param minimum   out: lowest value the camera takes now
 * @param maximum   out: highest value
 * @param value     out: present value
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails; nothing
 *         is written then
 */
TELVO_API int32_t expGetMultipleSlopeDual(uint32_t* minimum, uint32_t* maximum, uint32_t* value,
                                          int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets the third slope of the shutter ("MultipleSlopeTripleRaw").
 * @param value     in the camera's unit
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses
 */
TELVO_API int32_t expSetMultipleSlopeTriple(uint32_t value, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the third slope of the shutter and its limits ("MultipleSlopeTripleRaw").
 * @param minimum   out: lowest value the camera takes now
 * @param maximum   out: highest value
 * @param value     out: present value
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails; nothing
 *         is written then
 */
TELVO_API int32_t expGetMultipleSlopeTriple(uint32_t* minimum, uint32_t* maximum, uint32_t* value,
                                            int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets how many frames one trigger records ("RecordBurstCnt").
 * @param value     frames
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses
 */
TELVO_API int32_t expSetSingleSettingRecordBurstCnt(uint32_t value,
                                                    int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the number of frames per trigger and its limits ("RecordBurstCnt"). Each value is written
 * as soon as it is read.
 * @param minimum   out: lowest value the camera takes now
 * @param maximum   out: highest value
 * @param value     out: present value
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature, or a read failed; values
 *         read before it are written
 */
TELVO_API int32_t expGetSingleSettingRecordBurstCnt(uint32_t* minimum, uint32_t* maximum,
                                                    uint32_t* value,
                                                    int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Switches recording for as long as the trigger is active on or off ("RecordWhileTriggerActive").
 * @param enable    0: off; else on
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses
 */
TELVO_API int32_t expSetSingleSettingRecordWhileTrigger(uint8_t enable,
                                                        int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells whether recording for as long as the trigger is active is on ("RecordWhileTriggerActive").
 * @param enabled   out: 0 or 1
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails; nothing
 *         is written then
 */
TELVO_API int32_t expGetSingleSettingRecordWhileTrigger(uint8_t* enabled,
                                                        int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets when the image content releases a trigger: first the threshold, then the condition.
 * @param releaseCondition  the camera's number ("IBReleaseCondition")
 * @param threshold         in the camera's unit ("IBThreshold")
 * @param cameraId          the camera
 * @return 0; -1: unknown id, or the camera lacks a feature or refuses a value; the condition is not
 *         sent after a threshold that failed
 */
TELVO_API int32_t expUpdateTriggerValues(uint32_t releaseCondition, uint32_t threshold,
                                         int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Switches the trigger by image content on or off ("IBEnable").
 * @param enable    0: off; else on
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses
 */
TELVO_API int32_t expEnableFrameTrigger(uint8_t enable, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells whether the trigger by image content is on ("IBEnable").
 * @param enabled   out: 0 or 1
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails; nothing
 *         is written then
 */
TELVO_API int32_t expIsFrameTriggerEnabled(uint8_t* enabled, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Shows or hides the trigger window in the image ("IBWindowVisible").
 * @param enable    0: hidden; else shown
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses
 */
TELVO_API int32_t expEnableTriggerWindow(uint8_t enable, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets the window of the image whose content is watched, and when it releases a trigger. The window
 * is moved to the origin first and sized twice, so that every position and size within the image
 * can be reached; ten features are written.
 * @param top               upper edge in pixels ("IBOffsetY")
 * @param left              left edge in pixels ("IBOffsetX")
 * @param width             pixels ("IBWidth")
 * @param height            pixels ("IBHeight")
 * @param releaseCondition  the camera's number ("IBReleaseCondition")
 * @param threshold         in the camera's unit ("IBThreshold")
 * @param cameraId          the camera
 * @return 0; -1: unknown id, or the camera lacks a feature or refuses a value; the window may be
 *         partly changed then
 */
TELVO_API int32_t expSetFrameTrigger(uint32_t top, uint32_t left, uint32_t width, uint32_t height,
                                     uint32_t releaseCondition, uint32_t threshold,
                                     int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the window of the image whose content is watched, and when it releases a trigger.
 * @param top               out: upper edge in pixels ("IBOffsetY")
 * @param left              out: left edge in pixels ("IBOffsetX")
 * @param width             out: pixels ("IBWidth")
 * @param height            out: pixels ("IBHeight")
 * @param releaseCondition  out: the camera's number ("IBReleaseCondition")
 * @param threshold         out: in the camera's unit ("IBThreshold")
 * @param cameraId          the camera
 * @return 0; -1: unknown id, null pointer, or a read failed; values read before it are written
 *         (width, height, left, top, threshold, condition)
 */
TELVO_API int32_t expGetFrameTrigger(uint32_t* top, uint32_t* left, uint32_t* width,
                                     uint32_t* height, uint32_t* releaseCondition,
                                     uint32_t* threshold, int32_t cameraId) TELVO_NOEXCEPT;

// Recording memory

/**
 * Sets how the recording ends ("RecordMode").
 * @param mode      0: "Single", when the memory is full; 1: "Continuous", as a ring, when it is
 *                  stopped or triggered
 * @param cameraId  the camera
 * @return 0; -1: unknown id, other mode, the camera lacks the feature or refuses
 */
TELVO_API int32_t expSetRecordMode(uint32_t mode, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads how the recording ends ("RecordMode").
 * @param mode      out: as for expSetRecordMode; untouched for another entry
 * @param cameraId  the camera
 * @return 0, also for another entry; -1: unknown id, null pointer, the camera lacks the feature or
 *         the read fails; nothing is written then
 */
TELVO_API int32_t expGetRecordMode(uint32_t* mode, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets into how many sequences the recording memory is divided ("RecordNumberOfSequences").
 * @param count     1, 2, 4, 8 or 16
 * @param cameraId  the camera
 * @return 0; -1: unknown id, other count, the camera lacks the feature or refuses
 */
TELVO_API int32_t expSetNumberOfRecordSequences(uint32_t count, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads into how many sequences the recording memory is divided ("RecordNumberOfSequences").
 * @param count     out: 1, 2, 4, 8 or 16; 1 for another entry and on failure
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails; -2: not
 *         available in the camera's present state
 */
TELVO_API int32_t expGetNumberOfRecordSequences(uint32_t* count, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads how many frames the selected sequence holds ("RecordNumberOfFramesPerSequence").
 * @param count     out: frames
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails; nothing
 *         is written then
 */
TELVO_API int32_t expGetCurrentNumberOfFramesInSequence(uint32_t* count,
                                                        int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the image size of the last recording ("RecordLastRecWidth", "RecordLastRecHeight").
 * @param width     out: pixels; 0 when it cannot be read
 * @param height    out: pixels; 0 when it cannot be read
 * @param cameraId  the camera
 * @return 0, whatever the camera answers; -1: unknown id or null pointer
 */
TELVO_API int32_t expGetLastRecordDimensions(uint32_t* width, uint32_t* height,
                                             int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads how many frames the recording memory holds ("RecordNumberOfFrames").
 * @param count     out: frames; 0 without a connection and on failure
 * @param cameraId  the camera
 * @return 0, also without a connection; -1: null pointer, the camera lacks the feature or the read
 *         fails. For an unknown id 0, and the count is untouched
 */
TELVO_API int32_t expGetNumberOfAllRecordedFrames(uint32_t* count, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Gives the geometry as last read or set, and the number of recorded frames.
 * @param offsetX     out: pixels
 * @param offsetY     out: pixels
 * @param width       out: pixels
 * @param height      out: pixels
 * @param frameCount  out: frames in the recording memory; 0 without a connection
 * @param reserved    out: 0
 * @param unused      ignored; may be null
 * @param cameraId    the camera
 * @return 0; -1: null pointer. For an unknown id 0, and nothing is written
 */
TELVO_API int32_t expGetRecordInfo(uint32_t* offsetX, uint32_t* offsetY, uint32_t* width,
                                   uint32_t* height, int64_t* frameCount, int64_t* reserved,
                                   void* unused, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells whether the camera has a flash card ("FlashCardAvailable").
 * @param available  out: 0 or 1; 0 on failure
 * @param cameraId   the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature, does not offer it now, or
 *         the read fails
 */
TELVO_API int32_t expIsFlashCardAvailable(uint8_t* available, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Starts to copy the recording to the flash card ("FlashCardWrite"). Returns at once; see
 * expIsStateFlashWrite.
 * @param cameraId  the camera
 * @return 0, also when the camera refuses; -1: unknown id, or the camera does not offer it now
 */
TELVO_API int32_t expStartWriteToFlash(int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Stops copying the recording to the flash card ("FlashCardWriteStop"). Returns at once; see
 * expIsStateFlashWrite.
 * @param cameraId  the camera
 * @return 0, also when the camera refuses; -1: unknown id, or the camera does not offer it now
 */
TELVO_API int32_t expStopWriteToFlash(int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Switches the copy to the flash card at the end of a recording on or off
 * ("FlashCardWriteAfterRecordEnable").
 * @param enable    0: off; else on
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature, does not offer it now, or refuses
 */
TELVO_API int32_t expEnableFlashWriteAfterRecordStop(uint8_t enable,
                                                     int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells whether the copy to the flash card at the end of a recording is on
 * ("FlashCardWriteAfterRecordEnable").
 * @param enabled   out: 0 or 1
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature, does not offer it now, or
 *         the read fails; nothing is written then
 */
TELVO_API int32_t expIsFlashWriteAfterRecordStopEnabled(uint8_t* enabled,
                                                        int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Switches recording from power-on on or off ("RecordStartAtPowerOn").
 * @param enable    0: off; else on
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses
 */
TELVO_API int32_t expSetRecordAtPowerState(uint8_t enable, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells whether the camera records from power-on ("RecordStartAtPowerOn").
 * @param enabled   out: 0 or 1; 0 when the camera lacks the feature, untouched when the read fails
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails
 */
TELVO_API int32_t expGetRecordAtPowerState(uint8_t* enabled, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells whether the camera offers recording from power-on now ("RecordStartAtPowerOn").
 * @param available  out: 0 or 1; 0 when the camera lacks the feature
 * @param cameraId   the camera
 * @return 0; -1: unknown id, null pointer, or the camera lacks the feature
 */
TELVO_API int32_t expIsRecordAtPowerOnAvailable(uint8_t* available,
                                                int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Switches the IRIG-B time code input on or off ("IRIGBEnable").
 * @param enable    0: off; else on
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses
 */
TELVO_API int32_t expSetIRIGBState(uint8_t enable, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells whether the IRIG-B time code input is on ("IRIGBEnable").
 * @param enabled   out: 0 or 1
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails; nothing
 *         is written then
 */
TELVO_API int32_t expGetIRIGBState(uint8_t* enabled, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells whether the camera has an IRIG-B time code input ("IRIGBAvailable").
 * @param available  out: 0 or 1; 0 on failure
 * @param cameraId   the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails
 */
TELVO_API int32_t expIsIRIGBAvailable(uint8_t* available, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells whether the camera has the image function "ImageVANTOAvailable".
 * @param available  out: 0 or 1; 0 on failure
 * @param cameraId   the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails
 */
TELVO_API int32_t expIsImageVantoAvailable(uint8_t* available, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Saves the camera's settings in the selected user set ("UserSetSave"). At most 4 tries, 500 ms
 * after each refusal.
 * @param cameraId  the camera
 * @return 0; -1: unknown id, the camera lacks the feature or refuses four times
 */
TELVO_API int32_t expSaveUserSet(int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Gives the camera a name. It reaches the camera ("DeviceUserID") at expDisconnectGrabber, if it
 * differs from the present one.
 * @param name      NUL-terminated; cut at 49 characters
 * @param cameraId  the camera
 * @return 0; -1: unknown id or null pointer
 */
TELVO_API int32_t expSetUserDefinedName(const char* name, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Keeps a number of the host's in the camera ("Data03").
 * @param value     any
 * @param cameraId  the camera
 * @return 0, also when the camera refuses; -1: unknown id, or the camera lacks the feature
 */
TELVO_API int32_t expSetCustomInformation(uint32_t value, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the host's number from the camera ("Data03").
 * @param value     out: the number; 0 when the read fails
 * @param cameraId  the camera
 * @return 0, also when the read fails; -1: unknown id, null pointer, or the camera lacks the
 *         feature
 */
TELVO_API int32_t expGetCustomInformation(uint32_t* value, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Keeps the host's three colour factors, here and in the camera ("Data00" to "Data02", each as
 * (factor + 1) * 100 cut to a whole number).
 * @param first     0.0 to 5.0; others are not accepted at the next initialise
 * @param second    likewise
 * @param third     likewise
 * @param cameraId  the camera
 * @return 0, whatever the camera answers; -1: unknown id
 */
TELVO_API int32_t expSetColorInformation(double first, double second, double third,
                                         int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Gives the colour factors as last set, or as read from the camera at initialise; the camera is not
 * asked.
 * @param isColorCamera  out: 1: "PixelFormat" is not "Mono8"; 0: it is
 * @param first          out: 1.0 unless set
 * @param second         out: likewise
 * @param third          out: likewise
 * @param cameraId       the camera
 * @return 0; -1: unknown id or null pointer
 */
TELVO_API int32_t expGetColorInformation(uint8_t* isColorCamera, double* first, double* second,
                                         double* third, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets the camera's output data rate ("InternalDataRate").
 * @param value     0 to 15; read as signed and clamped
 * @param cameraId  the camera
 * @return 0, also when the camera refuses; -1: unknown id, the camera lacks the feature or does not
 *         offer it now
 */
TELVO_API int32_t expSetOutputDatarate(uint32_t value, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the camera's output data rate ("InternalDataRate").
 * @param value     out: 0 to 15; 0 on failure
 * @param cameraId  the camera
 * @return 0, also when the read fails; -1: unknown id, null pointer, the camera lacks the feature
 *         or does not offer it now
 */
TELVO_API int32_t expGetOutputDatarate(uint32_t* value, int32_t cameraId) TELVO_NOEXCEPT;

// Stream and link parameters

/**
 * Sets a parameter of the link or the stream, then pauses 100 ms (200 ms for "HeartbeatTimeout",
 * which is set at both ends).
 * @param name      case does not matter, and the beginning of a name is enough: the first of these
 *                  that begins with it is meant, the empty text means the first:
 *                  "GevSCPSPacketSize" (bytes), "FirstPacketTimeout", "PacketTimeout",
 *                  "RequestTimeout", "DefaultImageTimeout", "AnswerTimeout", "HeartbeatTimeout",
 *                  "HeartbeatInterval" (milliseconds), "InterPacketDelay" (the camera's "GevSCPD",
 *                  in its unit), "MaximumPendingResends" (packets; 0: no resends)
 * @param value     passed on as it is
 * @param cameraId  the camera
 * @return 0, also when the value is refused, except for "InterPacketDelay"; -1: unknown id, null
 *         pointer, unknown name, the parameter does not exist, or it is the stream's and the stream
 *         is closed
 */
TELVO_API int32_t expSetStreamParam(const char* name, uint32_t value,
                                    int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads a parameter of the link or the stream, then pauses 100 ms. The three that only this
 * function knows are the settings of initialise; they touch no device and do not pause.
 * @param name      case does not matter, and the beginning of a name is enough: the first of these
 *                  that begins with it is meant, the empty text means the first:
 *                  "GevSCPSPacketSize" (bytes), "FirstPacketTimeout", "PacketTimeout",
 *                  "RequestTimeout", "DefaultImageTimeout", "AnswerTimeout", "HeartbeatTimeout",
 *                  "HeartbeatInterval" (milliseconds), "DefaultInterPacketDelay",
 *                  "OutputInterPacketDelay", "DefaultOutputDataRate", "MaximumPendingResends"
 *                  (packets)
 * @param value     out: the value; untouched when the read fails
 * @param cameraId  the camera
 * @return 0, also when the read fails; -1: unknown id, null pointer, unknown name, the parameter
 *         does not exist, or it is the stream's and the stream is closed
 */
TELVO_API int32_t expGetStreamParam(const char* name, uint32_t* value,
                                    int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sets the size of the stream's packets ("GevSCPSPacketSize"), then pauses 100 ms.
 * @param value     bytes, with IP and UDP headers
 * @param cameraId  the camera
 * @return 0, also when the camera refuses; -1: unknown id, or the camera lacks the feature
 */
TELVO_API int32_t expSetPackageSize(uint32_t value, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the size of the stream's packets ("GevSCPSPacketSize"), then pauses 100 ms.
 * @param value     out: bytes, with IP and UDP headers; untouched when the read fails
 * @param cameraId  the camera
 * @return 0, also when the read fails; -1: unknown id, null pointer, or the camera lacks the
 *         feature
 */
TELVO_API int32_t expGetPackageSize(uint32_t* value, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Shows the stream's parameters in a window and waits until the user closes it; on Linux in a
 * dialog on the terminal. Returns at once where neither can be shown.
 * @param cameraId  the camera
 * @return 0; -1: unknown id
 */
TELVO_API int32_t expShowStreamParams(int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Shows the camera's features in a window and waits until the user closes it; on Linux in a dialog
 * on the terminal. Returns at once where neither can be shown.
 * @param cameraId  the camera
 * @return 0; -1: unknown id
 */
TELVO_API int32_t expShowGEVParams(int32_t cameraId) TELVO_NOEXCEPT;

// Modes and camera state

/**
 * Starts live mode: the camera streams images, of which the newest can be fetched with
 * expGetPreviewImage or expGetSingleImage. Ends playback.
 * @param cameraId  the camera
 * @return 0; -1: unknown id, not connected or never initialised, the camera lacks a command to
 *         start or stop its acquisition, image size 0, the camera's source cannot be switched, or
 *         the stream is closed; -2: no buffers for the stream
 */
TELVO_API int32_t expStartLiveMode(int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Ends the current mode, whichever it is. Waits, without limit, until the camera is idle or the
 * link is lost, looking every 500 ms; not for a camera that has no "CameraState".
 * @param cameraId  the camera
 * @return 0: stopped, now in playback, or nothing to stop; 2: recording stopped, the camera copies
 *         it to its flash card: wait for expIsStateIdle, then stop once more; 3: recording stopped,
 *         the camera stays in record standby; -1: unknown id, or in playback, which only the start
 *         of another mode ends
 * Every fetched live image becomes invalid. May be called while another thread waits for a block,
 * whose wait then ends.
 */
TELVO_API int32_t expStopLiveMode(int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Pauses live mode or resumes it: the camera stops or starts streaming, and all else stays as it
 * is.
 * @param pause     0: resume; else pause
 * @param cameraId  the camera
 * @return 0; -1: unknown id, or resumed without live mode
 */
TELVO_API int32_t expPauseLiveMode(uint8_t pause, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Starts record mode: the camera records into its memory and streams a preview meanwhile, to be
 * fetched as in live mode. Ends playback. Nothing happens in record mode.
 * @param cameraId  the camera
 * @return 0; -1: unknown id, not connected or never initialised, the camera lacks a command to
 *         start or stop its acquisition or a recording, image size 0, the camera's source cannot
 *         be switched, or the stream is closed; -2: no buffers for the stream
 */
TELVO_API int32_t expStartRecordMode(int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Ends the current mode, whichever it is, as expStopLiveMode does.
 * @param cameraId  the camera
 * @return 0: stopped, now in playback, or nothing to stop; 2: recording stopped, the camera copies
 *         it to its flash card: wait for expIsStateIdle, then stop once more; 3: recording stopped,
 *         the camera stays in record standby; -1: unknown id, or in playback, which only the start
 *         of another mode ends
 * Every fetched live image becomes invalid. May be called while another thread waits for a block,
 * whose wait then ends.
 */
TELVO_API int32_t expStopRecordMode(int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Stops the camera's acquisition, then the current mode as expStopRecordMode does.
 * @param cameraId  the camera
 * @return 0, whatever the stop gives; -1: unknown id
 */
TELVO_API int32_t expAbortRecording(int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells whether the camera is idle ("CameraState"); in record mode also whether it has finished
 * recording.
 * @param idle      out: 0 or 1; 0 without a connection
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, or the state cannot be read
 */
TELVO_API int32_t expIsStateIdle(uint8_t* idle, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells whether the camera is copying to its flash card ("CameraState").
 * @param flashWrite  out: 0 or 1; 0 without a connection
 * @param cameraId    the camera
 * @return 0; -1: unknown id, null pointer, or the state cannot be read
 */
TELVO_API int32_t expIsStateFlashWrite(uint8_t* flashWrite, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells whether the camera is recording the frames after the trigger
 * ("RecordTrailerRecordingActive").
 * @param active    out: 0 or 1; 0 without a connection and on failure
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails
 */
TELVO_API int32_t expIsTrailerRecordingActive(uint8_t* active, int32_t cameraId) TELVO_NOEXCEPT;

// Live images

/**
 * Counts the frames since recording started, as told by their frame counters. Counts 65,535 for
 * each wrap of the 16-bit counter.
 * @param cameraId  the camera
 * @return frames; 0: unknown id, or neither live nor record mode
 */
TELVO_API int32_t expGetCurrentNumberOfImages(int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Fetches the newest live or preview image. Each image is given once.
 * @param status    out: image byte 7, all bits inverted
 * @param last      out: image byte 15
 * @param cameraId  the camera
 * @return width * height bytes, one per pixel, row by row, starting with the 16-byte frame header;
 *         NULL: unknown id, null pointer, link lost, no image since the last fetch, or an image
 *         size that live mode does not take; nothing is written then
 * Lifetime: until this camera's next successful fetch, stop or start of a mode, or disconnect.
 */
TELVO_API const uint8_t* expGetPreviewImage(uint8_t* status, uint8_t* last,
                                            int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Fetches the newest live or preview image, with a result. Each image is given once.
 * @param result    out: 0; -3 as unsigned: no image since the last fetch, or an image size that
 *                  live mode does not take
 * @param flag      out: 0xFFFFFFFF when bit 2 of image byte 7 is set, else 0
 * @param status    out: image byte 7, all bits inverted
 * @param last      out: image byte 15
 * @param cameraId  the camera
 * @return width * height bytes, one per pixel, row by row, starting with the 16-byte frame header;
 *         NULL: unknown id, null pointer or link lost (nothing is written), or result is not 0
 *         (flag is 0 then)
 * Lifetime: until this camera's next successful fetch, stop or start of a mode, or disconnect.
 */
TELVO_API const uint8_t* expGetSingleImage(uint32_t* result, uint32_t* flag, uint8_t* status,
                                           uint8_t* last, int32_t cameraId) TELVO_NOEXCEPT;

// Recorded sequences

/**
 * Reads which sequence the camera is recording ("RecordCurrentSequenceNumber").
 * @param sequence  out: number, from 0
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails; nothing
 *         is written then
 */
TELVO_API int32_t expGetCurrentRecordingSequence(uint32_t* sequence,
                                                 int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads how many frames a sequence can hold ("RecordMaxFramesPerSequence").
 * @param count     out: frames; 0 when the read fails
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or the read fails
 */
TELVO_API int32_t expGetMaxFramesPerSequence(uint32_t* count, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Selects the sequence from which frames are read ("StreamSequenceSelector"). Does nothing on a
 * camera with one sequence only.
 * @param sequence  in/out: number, from 0; becomes the number sent, clamped into the camera's
 *                  limits
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, the camera lacks the feature or refuses
 */
TELVO_API int32_t expSetCurrentStreamSequence(uint32_t* sequence, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads the camera's description of its recording, in at most 3 tries. Fails in live and record
 * mode and during a block transfer, whose images the stream carries.
 * @param width       out: pixels
 * @param height      out: pixels
 * @param recordMode  out: 0 or 1
 * @param sequences   out: 1, 2, 4, 8 or 16; 0 when the description is not plausible
 * @param cameraId    the camera
 * @return the description as received: little-endian 32-bit words; bytes 32 to 95: stop pointers of
 *         sequences 0 to 15 (low 29 bits), bytes 96 to 99: the word that the outputs are decoded
 *         from. At least as many bytes as an image has. NULL: unknown id, null pointer, link lost,
 *         the camera cannot describe it, one of those modes (nothing is sent then), an image size
 *         of 0 or beyond the memory, or three failures; nothing is written then
 * Lifetime: until this camera's next frame or info-frame read, initialisation, record start or
 * disconnect.
 */
TELVO_API const uint8_t* expGetRecordInfoFramePointer(uint32_t* width, uint32_t* height,
                                                      uint32_t* recordMode, uint32_t* sequences,
                                                      int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Reads one recorded frame out of the camera's memory, in at most 8 tries; the frame of the last
 * try is given even if it is damaged. Fails in live and record mode and during a block transfer,
 * whose images the stream carries.
 * @param frame     frame number in the selected sequence
 * @param header    out: frame bytes 8 to 14, little-endian, zero-extended to 64 bits
 * @param flags     out: frame byte 7, all bits inverted
 * @param extra     out: frame byte 15
 * @param cameraId  the camera
 * @return width * height bytes, one per pixel, row by row, starting with the 16-byte frame header;
 *         NULL: unknown id, null pointer, link lost, the camera cannot deliver single frames, one
 *         of those modes (nothing is sent then), an image size of 0 or beyond the memory, or eight
 *         failures; nothing is written then
 * Lifetime: until this camera's next frame or info-frame read, initialisation, record start or
 * disconnect.
 */
TELVO_API const uint8_t* expGetFramePointer(int64_t frame, uint64_t* header, uint8_t* flags,
                                            uint8_t* extra, int32_t cameraId) TELVO_NOEXCEPT;

// Recorded frames in blocks

/**
 * Starts the transfer of recorded frames in blocks, from sequence 0. Ends playback.
 * @param cameraId  the camera
 * @return 0; -1: unknown id, not connected or never initialised, the camera lacks a command to
 *         start or stop its acquisition, the sequence cannot be selected, image size 0, or the
 *         stream is closed; -2: no buffers for the stream
 */
TELVO_API int32_t expStartFrameBlockTransfer(int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Ends the current mode, whichever it is, as expStopLiveMode does.
 * @param cameraId  the camera
 * @return 0: stopped, now in playback, or nothing to stop; 2: recording stopped, the camera copies
 *         it to its flash card: wait for expIsStateIdle, then stop once more; 3: recording stopped,
 *         the camera stays in record standby; -1: unknown id, or in playback, which only the start
 *         of another mode ends
 * Every fetched live image becomes invalid. May be called while another thread waits for a block,
 * whose wait then ends.
 */
TELVO_API int32_t expStopFrameBlockTransfer(int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Tells how many frames one request may ask for: as many as fit 5,800,320 bytes, but at least 1 and
 * at most 1000. Computed from the image size.
 * @param frames    out: frames
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, or image size 0
 */
TELVO_API int32_t expGetFrameBlockSize(uint32_t* frames, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Asks the camera for a block of frames and returns at once. Follow it by exactly one
 * expGetRecordedFrameBlockResult.
 * @param unused      ignored; may be null
 * @param sequence    number, from 0; selected if it is not 0
 * @param firstFrame  frame number in the sequence
 * @param frameCount  frames; at most what expGetFrameBlockSize tells
 * @param cameraId    the camera
 * @return 0; 1: link lost; -1: unknown id, no transfer started, frameCount 0, the sequence or the
 *         request was refused, or the camera lacks what a request needs
 */
TELVO_API int32_t expGetRecordedFrameBlock(void* unused, uint32_t sequence, uint32_t firstFrame,
                                           uint32_t frameCount, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Waits for the block asked for, without limit; expAbortCurrentFrameBlockRequest, a lost link and a
 * stop end the wait, the first and the last from another thread. Gaps in the frame counters are
 * logged only.
 * @param unused    ignored; may be null
 * @param frames    out: frames in the block; written only with a block
 * @param status    out: 0: complete; 1: aborted; 0xFFFFFFFF: the transfer has ended, maybe by a
 *                  stop during this call, or the image size is by now 0 or such that the frames
 *                  take more than 256 MiB; untouched after a lost link
 * @param cameraId  the camera
 * @return the frames one after the other, each width * height bytes starting with its 16-byte
 *         header; NULL: unknown id, null pointer, link lost, or status is not 0
 * Lifetime: until this camera's next block is collected, start of a mode, or disconnect; a stop
 * leaves it.
 */
TELVO_API const uint8_t* expGetRecordedFrameBlockResult(void* unused, int64_t* frames,
                                                        uint32_t* status,
                                                        int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Gives one frame of the block last collected.
 * @param unused    ignored; may be null
 * @param index     frame in the block, from 0; only the block's memory bounds it, not the number of
 *                  frames collected
 * @param header    out: frame bytes 8 to 14, little-endian, zero-extended to 64 bits
 * @param flags     out: frame byte 7, all bits inverted
 * @param extra     out: frame byte 15
 * @param cameraId  the camera
 * @return the frame in the block, width * height bytes; NULL: unknown id, null pointer, link lost,
 *         no transfer, or outside the block; nothing is written then
 * Lifetime: until this camera's next block is collected, start of a mode, or disconnect; a stop
 * leaves it.
 */
TELVO_API const uint8_t* expGetRecordedFrameBlockInfo(void* unused, uint32_t index,
                                                      uint64_t* header, uint8_t* flags,
                                                      uint8_t* extra,
                                                      int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Ends the wait for the block asked for. May be called from another thread than the one that waits.
 * @param cameraId  the camera
 * @return 0, also without a request; -1: unknown id
 */
TELVO_API int32_t expAbortCurrentFrameBlockRequest(int32_t cameraId) TELVO_NOEXCEPT;

// Serial line

/**
 * Reads what the camera has sent over its serial line, waiting at most 2000 ms.
 * @param buffer    out: bytes
 * @param count     in: bytes wanted, out: bytes read, maybe 0
 * @param cameraId  the camera
 * @return 0, also when nothing came; -1: unknown id or null pointer
 */
TELVO_API int32_t expReadData(uint8_t* buffer, uint32_t* count, int32_t cameraId) TELVO_NOEXCEPT;

/**
 * Sends bytes over the camera's serial line. Not during a block transfer with request mode 1.
 * @param data      bytes; also logged as text up to the first NUL
 * @param count     bytes to send
 * @param cameraId  the camera
 * @return 0; -1: unknown id, null pointer, or not all bytes were taken
 */
TELVO_API int32_t expWriteData(const uint8_t* data, uint32_t count,
                               int32_t cameraId) TELVO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
