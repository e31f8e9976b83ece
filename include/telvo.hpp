/**
 * TelvoDll for C++20: cameras, live images and recordings as objects that end what they began.
 * Header only, over the functions of TelvoDll.h, whose numbers, units and thread rules apply: one
 * thread per camera. Everything here moves and nothing copies. Failures are thrown as telvo::Error.
 *
 *     telvo::Camera camera("02:54:45:00:00:0b", "127.0.0.11");
 *     camera.set(telvo::frameRate, 500);
 *     telvo::Live live = camera.live();
 *     if (const auto frame = live.next(std::chrono::seconds(1))) { show(frame->image); }
 */
#ifndef TELVO_INCLUDE_TELVO_HPP
#define TELVO_INCLUDE_TELVO_HPP

#include "TelvoDll.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

namespace telvo
{

/// A function of the library's has failed.
class Error : public std::runtime_error
{
  public:
    Error(const std::string& what, std::int32_t result)
        : std::runtime_error(what + " (result " + std::to_string(result) + ")"), mResult(result)
    {
    }
    /// What the function returned; for one that returns a pointer -1.
    std::int32_t result() const { return mResult; }

  private:
    std::int32_t mResult;
};

/// @return the result, unless it is negative. @throws Error
inline std::int32_t require(std::int32_t result, const char* what)
{
    if (result < 0) {
        throw Error(what, result);
    }
    return result;
}

/// A setting with limits, in the camera's unit.
struct Range {
    std::uint32_t minimum;
    std::uint32_t maximum;
    std::uint32_t value;
};

/// A setting by its two functions.
struct Setting {
    const char* name;
    std::int32_t (*write)(std::uint32_t, std::int32_t) noexcept;
    std::int32_t (*read)(std::uint32_t*, std::uint32_t*, std::uint32_t*, std::int32_t) noexcept;
};
inline constexpr Setting exposureTime{"exposure time", expSetExposureTime, expGetExposureTime};
inline constexpr Setting frameRate{"frame rate", expSetFrameRate, expGetFrameRate};
inline constexpr Setting blackLevel{"black level", expSetBlacklevel, expGetBlacklevel};
inline constexpr Setting trailerCounter{"trailer", expSetTrailerCounter, expGetTrailerCounter};

struct Size {
    std::uint32_t width;  ///< pixels
    std::uint32_t height; ///< pixels
    std::size_t bytes() const { return std::size_t{width} * height; }
};

/// A frame in the library's memory.
struct Frame {
    /// One byte per pixel, row by row; the first 16 are the header.
    std::span<const std::uint8_t> image;
    TelvoFrameHeader header;
};

/// Ends a mode of a camera when it goes out of scope.
class Mode
{
  public:
    Mode(Mode&& other) noexcept : mId(std::exchange(other.mId, std::nullopt)) {}
    Mode& operator=(Mode&& other) noexcept
    {
        std::swap(mId, other.mId);
        return *this;
    }
    Mode(const Mode&) = delete;
    Mode& operator=(const Mode&) = delete;
    ~Mode()
    {
        if (mId) {
            (void)expStopLiveMode(*mId);
        }
    }

  protected:
    explicit Mode(std::int32_t id) : mId(id) {}
    std::int32_t id() const { return *mId; }
    void forget() { mId.reset(); }

  private:
    std::optional<std::int32_t> mId; // nothing: moved from, or ended
};

/// Live images, or the preview of a recording.
class Live : public Mode
{
  public:
    /// @return the newest image, until the next one is taken or the mode ends; nothing when none
    /// has come since the last one
    std::optional<Frame> newest()
    {
        std::uint8_t status = 0;
        std::uint8_t last = 0;
        const std::uint8_t* const image = expGetPreviewImage(&status, &last, id());
        return image == nullptr
                   ? std::nullopt
                   : std::optional(Frame{{image, mSize.bytes()}, telvoFrameHeader(image)});
    }

    /// As newest(), but waits for an image so long.
    std::optional<Frame> next(std::chrono::milliseconds patience)
    {
        const auto end = std::chrono::steady_clock::now() + patience;
        std::optional<Frame> frame = newest();
        while (!frame && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            frame = newest();
        }
        return frame;
    }

  protected:
    friend class Camera;
    Live(std::int32_t id, Size size) : Mode(id), mSize(size) {}

  private:
    Size mSize;
};

/// A recording that is under way; it has a preview.
class Recording : public Live
{
  public:
    /// Frames since it started.
    std::int32_t frames() const { return expGetCurrentNumberOfImages(id()); }

    /// Whether the camera has ended it: the memory is full, or the trigger came.
    bool isOver() const
    {
        std::uint8_t isIdle = 0;
        require(expIsStateIdle(&isIdle, id()), "cannot read the camera's state");
        return isIdle != 0;
    }

    /// @return 0; 2: the camera copies it to its flash card; 3: the camera is in record standby
    std::int32_t stop()
    {
        const std::int32_t result = expStopRecordMode(id());
        forget();
        return require(result, "cannot stop the recording");
    }

  private:
    friend class Camera;
    using Live::Live;
};

/// Recorded frames in blocks.
class BlockTransfer : public Mode
{
  public:
    /// Frames of one read at most.
    std::uint32_t framesPerBlock() const
    {
        std::uint32_t frames = 0;
        require(expGetFrameBlockSize(&frames, id()), "there is no image size");
        return frames;
    }

    /// Reads frames back, and waits for them.
    /// @return frame behind frame, until the next read; with fewer bytes than asked for only when
    /// the camera has sent fewer frames
    std::span<const std::uint8_t> read(std::uint32_t sequence, std::uint32_t first,
                                       std::uint32_t count)
    {
        require(expGetRecordedFrameBlock(nullptr, sequence, first, count, id()) == 0 ? 0 : -1,
                "cannot ask for frames");
        std::int64_t frames = 0;
        std::uint32_t status = 0;
        const std::uint8_t* const block =
            expGetRecordedFrameBlockResult(nullptr, &frames, &status, id());
        require(block == nullptr ? -1 : 0, "cannot read frames");
        return {block, static_cast<std::size_t>(frames) * mSize.bytes()};
    }

    /// Calls take(Frame) with one frame after the other.
    template <typename Take>
    void readAll(std::uint32_t sequence, std::uint32_t first, std::uint32_t count, Take take)
    {
        const std::uint32_t most = framesPerBlock();
        while (count > 0) {
            const auto block = read(sequence, first, std::min(count, most));
            const std::size_t frames = block.size() / mSize.bytes();
            require(frames == 0 ? -1 : 0, "the camera has sent no frames");
            for (std::size_t i = 0; i < frames; ++i) {
                const auto image = block.subspan(i * mSize.bytes(), mSize.bytes());
                take(Frame{image, telvoFrameHeader(image.data())});
            }
            first += static_cast<std::uint32_t>(frames);
            count -= std::min(count, static_cast<std::uint32_t>(frames));
        }
    }

  private:
    friend class Camera;
    BlockTransfer(std::int32_t id, Size size) : Mode(id), mSize(size) {}

    Size mSize;
};

/// A connected camera, from its construction to its destruction. It outlives the modes it gives.
class Camera
{
  public:
    /// Connects and initialises; a camera whose user set had to be prepared is connected twice.
    /// @param settings  all 0: the library's own
    explicit Camera(const std::string& macAddress, const std::string& ipAddress,
                    const TelvoConnectionSettings& settings = {})
        : mId(nextId())
    {
        std::int32_t result = open(macAddress, ipAddress, settings);
        if (result == kUserSetPrepared) {
            result = open(macAddress, ipAddress, settings);
        }
        require(result, "cannot initialise the camera");
        mIsRecording = result == kAttachedToRecording;
    }
    Camera(Camera&& other) noexcept
        : mId(std::exchange(other.mId, std::nullopt)), mIsRecording(other.mIsRecording)
    {
    }
    Camera& operator=(Camera&& other) noexcept
    {
        std::swap(mId, other.mId);
        std::swap(mIsRecording, other.mIsRecording);
        return *this;
    }
    Camera(const Camera&) = delete;
    Camera& operator=(const Camera&) = delete;
    ~Camera()
    {
        if (mId) {
            (void)expDisconnectGrabber(*mId);
        }
    }

    /// For the functions of TelvoDll.h.
    std::int32_t id() const { return *mId; }
    /// It was found recording, and goes on: attach() gives the recording.
    bool wasRecording() const { return mIsRecording; }

    /// @param key  "model", "serialNumber" and so on: see expGetParam
    std::string text(const char* key) const
    {
        std::array<char, 50> text{};
        const auto size = static_cast<std::uint32_t>(text.size());
        require(expGetParam(key, text.data(), &size, id()), key);
        return text.data();
    }

    void set(const Setting& setting, std::uint32_t value)
    {
        require(setting.write(value, id()), setting.name);
    }
    Range get(const Setting& setting) const
    {
        Range range{};
        require(setting.read(&range.minimum, &range.maximum, &range.value, id()), setting.name);
        return range;
    }

    Size size() const
    {
        Size size{};
        require(expGetWidth(&size.width, id()), "cannot read the width");
        require(expGetHeight(&size.height, id()), "cannot read the height");
        return size;
    }
    /// @return the size that the camera took
    Size resize(Size size)
    {
        require(expSetWidth(&size.width, id()), "cannot set the width");
        require(expSetHeight(&size.height, id()), "cannot set the height");
        return size;
    }

    Live live()
    {
        require(expStartLiveMode(id()), "live mode does not start");
        return {id(), size()};
    }
    Recording record()
    {
        require(expStartRecordMode(id()), "the recording does not start");
        return {id(), size()};
    }
    /// The recording during which the camera was connected.
    Recording attach() { return {id(), size()}; }

    /// Frames of all recorded sequences.
    std::uint32_t recordedFrames() const
    {
        std::uint32_t frames = 0;
        require(expGetNumberOfAllRecordedFrames(&frames, id()), "cannot read the frame count");
        return frames;
    }
    /// One recorded frame, until the next one.
    Frame recordedFrame(std::int64_t number)
    {
        std::uint64_t header = 0;
        std::uint8_t flags = 0;
        std::uint8_t extra = 0;
        const std::uint8_t* const image = expGetFramePointer(number, &header, &flags, &extra, id());
        require(image == nullptr ? -1 : 0, "cannot read the frame");
        return {{image, size().bytes()}, telvoFrameHeader(image)};
    }
    BlockTransfer readBlocks()
    {
        require(expStartFrameBlockTransfer(id()), "the readout does not start");
        return {id(), size()};
    }

  private:
    static constexpr std::int32_t kUserSetPrepared = -2;
    static constexpr std::int32_t kAttachedToRecording = 1;

    /// Ids that a host is not likely to choose itself.
    static std::int32_t nextId()
    {
        static std::atomic<std::int32_t> next = 0x5454'0000;
        return next++;
    }

    std::int32_t open(const std::string& macAddress, const std::string& ipAddress,
                      const TelvoConnectionSettings& settings)
    {
        require(expConnectGrabber(macAddress.c_str(), ipAddress.c_str(), 1, &settings, id()),
                "cannot connect to the camera");
        const std::int32_t result = expInitializeGrabber(&settings, id());
        if (result < 0) {
            (void)expDisconnectGrabber(id());
        }
        return result;
    }

    std::optional<std::int32_t> mId; // nothing: moved from
    bool mIsRecording = false;
};

} // namespace telvo

#endif
