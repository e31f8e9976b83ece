// One whole way with a camera, which runs already on 127.0.0.11 with its user sets prepared: see
// with-camera.sh.
#include "FrameRenderer.h"
#include "LoadedLibrary.h"
#include "ProcessCounts.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <span>
#include <thread>
#include <vector>

namespace
{

using namespace std::chrono_literals;

constexpr std::int32_t kId = 7;
// One frame fits a socket's buffer, so that a busy machine loses none of it.
constexpr std::uint32_t kWidth = 320;
constexpr std::uint32_t kHeight = 240;
constexpr std::size_t kFrameSize = std::size_t{kWidth} * kHeight;
constexpr camera::SceneView kView{.width = kWidth, .height = kHeight};

/// Resends on, frames requested over the serial line.
TelvoConnectionSettings fastSettings()
{
    TelvoConnectionSettings settings{};
    settings.useSettings = 1;
    settings.packetSize = 8000;
    settings.defaultInterPacketDelay = 2000;
    settings.packetTimeout = 1000;
    settings.requestTimeout = 1100;
    settings.defaultImageTimeout = 1100;
    settings.answerTimeout = 1000;
    settings.heartbeatTimeout = 3000;
    settings.heartbeatInterval = 1000;
    settings.maximumPendingResends = 1000;
    settings.fastReadoutActive = 1;
    settings.requestMode = 1;
    settings.outputDataRate = 3;
    return settings;
}

bool eventually(const std::function<bool()>& condition)
{
    const auto deadline = std::chrono::steady_clock::now() + 20s;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        std::this_thread::sleep_for(1ms);
    }
    return true;
}

std::uint64_t littleEndian(std::span<const std::uint8_t> bytes)
{
    std::uint64_t value = 0;
    for (std::size_t i = bytes.size(); i > 0; --i) {
        value = value << 8 | bytes[i - 1];
    }
    return value;
}

camera::FrameStamp stampOf(std::span<const std::uint8_t> frame)
{
    return {.sequence = frame[6],
            .number = static_cast<std::uint32_t>(littleEndian(frame.first(4))),
            .time = littleEndian(frame.subspan(8, 7)),
            .flags = frame[7],
            .last = frame[15] != 0};
}

/// Every byte of a frame follows from its stamp, that is what its header says.
void expectFrame(std::span<const std::uint8_t> frame, const camera::FrameStamp& stamp)
{
    EXPECT_TRUE(std::ranges::equal(frame, camera::renderFrame(kView, stamp)))
        << "frame " << stamp.number << " of sequence " << stamp.sequence;
}

class CameraWay : public testing::Test
{
  protected:
    void SetUp() override
    {
        ASSERT_TRUE(mLibrary.isLoaded());
        const TelvoConnectionSettings settings = fastSettings();
        ASSERT_EQ(
            FUNCTION(mLibrary, expConnectGrabber)("127.0.0.11", "127.0.0.11", 1, &settings, kId),
            0);
        EXPECT_EQ(FUNCTION(mLibrary, expSetChangedCallback)([](std::int32_t) {}, kId), 0);
        ASSERT_EQ(FUNCTION(mLibrary, expInitializeGrabber)(&settings, kId), 0);
        std::uint32_t width = kWidth;
        std::uint32_t height = kHeight;
        ASSERT_EQ(FUNCTION(mLibrary, expSetWidth)(&width, kId), 0);
        ASSERT_EQ(FUNCTION(mLibrary, expSetHeight)(&height, kId), 0);
        ASSERT_EQ(width, kWidth);
        ASSERT_EQ(height, kHeight);
    }

    void TearDown() override
    {
        EXPECT_EQ(FUNCTION(mLibrary, expDisconnectGrabber)(kId), 0);
        EXPECT_EQ(FUNCTION(mLibrary, expStopLiveMode)(kId), -1); // the id is unknown again
    }

    /// The newest live image, copied; empty if there is none.
    std::vector<std::uint8_t> previewImage()
    {
        std::uint8_t status = 0;
        std::uint8_t last = 0;
        const std::uint8_t* const image =
            FUNCTION(mLibrary, expGetPreviewImage)(&status, &last, kId);
        return image == nullptr ? std::vector<std::uint8_t>()
                                : std::vector<std::uint8_t>(image, image + kFrameSize);
    }

    std::vector<std::uint8_t> nextImage()
    {
        std::vector<std::uint8_t> image;
        EXPECT_TRUE(eventually([&] {
            image = previewImage();
            return !image.empty();
        }));
        return image;
    }

    /// Records at least this many frames. @return how many it became
    std::uint32_t record(std::uint32_t frames)
    {
        EXPECT_EQ(FUNCTION(mLibrary, expStartRecordMode)(kId), 0);
        std::uint32_t recorded = 0;
        const auto count = [&] {
            EXPECT_EQ(FUNCTION(mLibrary, expGetNumberOfAllRecordedFrames)(&recorded, kId), 0);
            return recorded >= frames;
        };
        EXPECT_TRUE(eventually(count));
        EXPECT_EQ(FUNCTION(mLibrary, expStopRecordMode)(kId), 0);
        count();
        return recorded;
    }

    /// Reads frames block by block, all bytes of them.
    std::vector<std::uint8_t> readBlocks(std::uint32_t frames)
    {
        std::vector<std::uint8_t> bytes;
        EXPECT_EQ(FUNCTION(mLibrary, expStartFrameBlockTransfer)(kId), 0);
        std::uint32_t blockFrames = 0;
        EXPECT_EQ(FUNCTION(mLibrary, expGetFrameBlockSize)(&blockFrames, kId), 0);
        for (std::uint32_t first = 0; first < frames && blockFrames != 0; first += blockFrames) {
            readBlock(first, std::min(blockFrames, frames - first), bytes);
        }
        EXPECT_EQ(FUNCTION(mLibrary, expStopFrameBlockTransfer)(kId), 0);
        return bytes;
    }

    void readBlock(std::uint32_t first, std::uint32_t count, std::vector<std::uint8_t>& bytes)
    {
        ASSERT_EQ(FUNCTION(mLibrary, expGetRecordedFrameBlock)(nullptr, 0, first, count, kId), 0);
        std::int64_t got = 0;
        std::uint32_t status = 99;
        const std::uint8_t* const block =
            FUNCTION(mLibrary, expGetRecordedFrameBlockResult)(nullptr, &got, &status, kId);
        ASSERT_NE(block, nullptr) << "status " << status;
        ASSERT_EQ(got, count);
        bytes.insert(bytes.end(), block, block + count * kFrameSize);
    }

    LoadedLibrary mLibrary;
};

TEST_F(CameraWay, ShowsLivePicturesByteForByte)
{
    ASSERT_EQ(FUNCTION(mLibrary, expStartLiveMode)(kId), 0);
    std::uint32_t previous = 0;
    for (int i = 0; i < 10; ++i) {
        const std::vector<std::uint8_t> image = nextImage();
        ASSERT_EQ(image.size(), kFrameSize);
        const camera::FrameStamp stamp = stampOf(image);
        expectFrame(image, stamp);
        EXPECT_TRUE(i == 0 || stamp.number > previous);
        previous = stamp.number;
    }
    EXPECT_EQ(FUNCTION(mLibrary, expStopLiveMode)(kId), 0);
}

TEST_F(CameraWay, ReadsARecordingInBlocksByteForByte)
{
    const std::uint32_t frames = record(40);
    const std::vector<std::uint8_t> bytes = readBlocks(frames);
    ASSERT_EQ(bytes.size(), frames * kFrameSize);
    for (std::uint32_t i = 0; i < frames; ++i) {
        const auto frame = std::span(bytes).subspan(i * kFrameSize, kFrameSize);
        const std::uint64_t time = stampOf(frame).time; // the camera's; the rest is known
        expectFrame(frame, {.sequence = 0,
                            .number = i,
                            .time = time,
                            .flags = camera::kFlagRecording,
                            .last = i + 1 == frames});
    }
}

TEST_F(CameraWay, ReadsASingleRecordedFrameByteForByte)
{
    ASSERT_GE(record(10), 10U);
    std::uint64_t header = 0;
    std::uint8_t flags = 0;
    std::uint8_t extra = 0;
    const std::uint8_t* const frame =
        FUNCTION(mLibrary, expGetFramePointer)(5, &header, &flags, &extra, kId);
    ASSERT_NE(frame, nullptr);
    expectFrame({frame, kFrameSize},
                {.number = 5, .time = header, .flags = camera::kFlagRecording});
    EXPECT_EQ(flags, static_cast<std::uint8_t>(~camera::kFlagRecording));
    EXPECT_EQ(extra, 0);
}

void loadConnectUnload()
{
    const LoadedLibrary library;
    ASSERT_TRUE(library.isLoaded());
    const TelvoConnectionSettings settings = fastSettings();
    EXPECT_EQ(FUNCTION(library, expConnectGrabber)("127.0.0.11", "127.0.0.11", 1, &settings, kId),
              0);
    EXPECT_EQ(FUNCTION(library, expInitializeGrabber)(&settings, kId), 0);
    EXPECT_EQ(FUNCTION(library, expStartLiveMode)(kId), 0);
    EXPECT_EQ(FUNCTION(library, expStopLiveMode)(kId), 0);
    EXPECT_EQ(FUNCTION(library, expDisconnectGrabber)(kId), 0);
}

TEST(CameraWayEnd, LeaksNoHandleAndNoThread)
{
    loadConnectUnload(); // what the system opens once for a process
    const ProcessCounts before = countProcess();
    for (int i = 0; i < 3; ++i) {
        loadConnectUnload();
    }
    EXPECT_EQ(countProcess(), before);
    EXPECT_EQ(GetModuleHandleA("TelvoDll.dll"), nullptr);
}

} // namespace
