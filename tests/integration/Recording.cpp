#include "Recording.h"

#include <algorithm>

using camera::FeatureId;
using camera::VirtualCamera;

namespace
{

constexpr std::uint32_t kWidth = 64;
constexpr std::uint32_t kHeight = 48;
constexpr std::uint32_t kFrameRate = 2000;
constexpr std::int64_t kContinuous = 1;
constexpr std::uint32_t kSequences = 4;

std::size_t frameSizeOf(const VirtualCamera& camera)
{
    const camera::SceneView view = camera.recordedView();
    return std::size_t{view.width} * view.height;
}

} // namespace

camera::CameraOptions recordingCamera(std::uint32_t frames, const std::string& address)
{
    camera::CameraOptions options = preparedCamera(address);
    options.memoryBytes = std::uint64_t{frames} * kWidth * kHeight;
    options.settings = {{FeatureId::Width, kWidth},
                        {FeatureId::Height, kHeight},
                        {FeatureId::AcquisitionFrameRateRaw, kFrameRate}};
    return options;
}

camera::CameraOptions recordedCamera(std::uint32_t frames, const std::string& address)
{
    camera::CameraOptions options = recordingCamera(frames, address);
    options.recordAtPowerOn = true;
    return options;
}

camera::CameraOptions withFourSequences(camera::CameraOptions options, std::uint32_t trailer)
{
    options.settings[FeatureId::RecordMode] = kContinuous;
    options.settings[FeatureId::RecordNumberOfSequences] = kSequences;
    options.settings[FeatureId::RecordTrailer] = trailer;
    options.settings[FeatureId::ExtTriggerEnable] = 1;
    return options;
}

bool triggerFourSequences(VirtualCamera& camera)
{
    for (std::uint32_t sequence = 0; sequence < kSequences; ++sequence) {
        camera.trigger();
        const bool isNext = eventually([&] {
            return camera.value(FeatureId::RecordCurrentSequenceNumber) > sequence ||
                   camera.value(FeatureId::CameraState) != camera::kStateRecording;
        });
        if (!isNext) {
            return false;
        }
    }
    return hasFinished(camera);
}

bool hasFinished(const VirtualCamera& camera)
{
    return eventually(
        [&] { return camera.value(FeatureId::CameraState) != camera::kStateRecording; });
}

TelvoConnectionSettings patientSettings()
{
    TelvoConnectionSettings settings = fastSettings();
    settings.packetTimeout = 5000;
    settings.requestTimeout = 6000;
    settings.defaultImageTimeout = 6000;
    settings.answerTimeout = 3000;
    settings.heartbeatTimeout = 12'000;
    return settings;
}

TelvoConnectionSettings featureSettings()
{
    TelvoConnectionSettings settings = patientSettings();
    settings.requestMode = 0;
    return settings;
}

TelvoConnectionSettings incompleteFrameSettings()
{
    TelvoConnectionSettings settings = patientSettings();
    settings.packetSize = 1500;
    settings.packetTimeout = 100;
    settings.defaultImageTimeout = 200;
    return settings;
}

TelvoConnectionSettings lostFrameSettings()
{
    TelvoConnectionSettings settings = patientSettings();
    settings.requestTimeout = 300;
    return settings;
}

std::int32_t requestBlock(const Host& host, const FrameRange& range)
{
    return expGetRecordedFrameBlock(nullptr, range.sequence, range.first, range.count, host.id());
}

Block collectBlock(const Host& host, const VirtualCamera& camera)
{
    Block block;
    const std::uint8_t* const bytes =
        expGetRecordedFrameBlockResult(nullptr, &block.frames, &block.status, host.id());
    if (bytes != nullptr) {
        const std::size_t size = static_cast<std::size_t>(block.frames) * frameSizeOf(camera);
        block.bytes.assign(bytes, bytes + size);
    }
    return block;
}

std::vector<std::uint8_t> recordedBytes(const VirtualCamera& camera, const FrameRange& range)
{
    std::vector<std::uint8_t> bytes;
    bytes.reserve(range.count * frameSizeOf(camera));
    for (std::uint32_t index = range.first; index < range.first + range.count; ++index) {
        const auto frame = camera.recordedBytes(range.sequence, index);
        bytes.insert(bytes.end(), frame.begin(), frame.end());
    }
    return bytes;
}

std::uint32_t recordedFrames(const VirtualCamera& camera, std::uint32_t sequence)
{
    std::uint32_t frames = 0;
    while (camera.recordedFrame(sequence, frames)) {
        ++frames;
    }
    return frames;
}

testing::AssertionResult sameFrames(const std::vector<std::uint8_t>& got,
                                    const std::vector<std::uint8_t>& expected,
                                    std::size_t frameSize)
{
    if (got.size() != expected.size()) {
        return testing::AssertionFailure() << got.size() << " bytes instead of " << expected.size()
                                           << " with frames of " << frameSize << " bytes";
    }
    const auto [differs, wanted] = std::mismatch(got.begin(), got.end(), expected.begin());
    if (differs == got.end()) {
        return testing::AssertionSuccess();
    }
    const auto at = static_cast<std::size_t>(differs - got.begin());
    return testing::AssertionFailure()
           << "frame " << at / frameSize << " differs from its byte " << at % frameSize
           << " on: " << +*differs << " instead of " << +*wanted;
}

testing::AssertionResult collectsRecorded(const Host& host, const VirtualCamera& camera,
                                          const FrameRange& range)
{
    const Block block = collectBlock(host, camera);
    if (block.status != 0 || block.frames != range.count) {
        return testing::AssertionFailure()
               << block.frames << " frames with status " << block.status << " instead of "
               << range.count << " from " << range.first;
    }
    return sameFrames(block.bytes, recordedBytes(camera, range), frameSizeOf(camera))
           << " in frames " << range.first << " to " << range.first + range.count - 1
           << " of sequence " << range.sequence;
}

testing::AssertionResult readsRecorded(const Host& host, const VirtualCamera& camera,
                                       const FrameRange& range)
{
    if (const std::int32_t result = requestBlock(host, range); result != 0) {
        return testing::AssertionFailure() << "the request gave " << result;
    }
    return collectsRecorded(host, camera, range);
}

testing::AssertionResult readsWholeSequence(const Host& host, const VirtualCamera& camera,
                                            std::uint32_t sequence)
{
    std::uint32_t perBlock = 0;
    expGetFrameBlockSize(&perBlock, host.id());
    const std::uint32_t all = recordedFrames(camera, sequence);
    if (perBlock == 0 || all == 0) {
        return testing::AssertionFailure()
               << all << " frames in blocks of " << perBlock << " from sequence " << sequence;
    }
    for (std::uint32_t first = 0; first < all; first += perBlock) {
        const FrameRange range{sequence, first, std::min(perBlock, all - first)};
        if (auto result = readsRecorded(host, camera, range); !result) {
            return result;
        }
    }
    return testing::AssertionSuccess();
}

void RecordedCameraTest::open(const camera::CameraOptions& options,
                              const TelvoConnectionSettings& settings)
{
    camera = std::make_unique<VirtualCamera>(options);
    ASSERT_FALSE(camera->start());
    ASSERT_TRUE(hasFinished(*camera));
    host.open(*camera, settings);
}

void RecordedCameraTest::openFourSequences(std::uint32_t frames,
                                           const TelvoConnectionSettings& settings)
{
    constexpr std::uint32_t kTrailer = 10;
    camera = std::make_unique<VirtualCamera>(withFourSequences(recordedCamera(frames), kTrailer));
    ASSERT_FALSE(camera->start());
    ASSERT_TRUE(triggerFourSequences(*camera));
    host.open(*camera, settings);
}
