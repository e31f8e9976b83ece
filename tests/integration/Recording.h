#ifndef TELVO_TESTS_INTEGRATION_RECORDING_H
#define TELVO_TESTS_INTEGRATION_RECORDING_H

#include "Host.h"

#include <gtest/gtest.h>
#include <memory>

/// Options of a camera that records frames of 64 x 48 pixels, 2000 a second, into a memory for so
/// many of them: in single mode it ends by itself when the memory is full.
camera::CameraOptions recordingCamera(std::uint32_t frames,
                                      const std::string& address = "127.0.0.11");

/// The same, and by the time a host comes it has recorded already.
camera::CameraOptions recordedCamera(std::uint32_t frames,
                                     const std::string& address = "127.0.0.11");

/// Options as given, with a memory divided into four sequences that a trigger fills one by one:
/// each ends so many frames after its trigger.
camera::CameraOptions withFourSequences(camera::CameraOptions options, std::uint32_t trailer);

/// Triggers a recording of four sequences to its end. @return false: it did not end
bool triggerFourSequences(camera::VirtualCamera& camera);

/// @return false: the camera still records after 10 seconds
bool hasFinished(const camera::VirtualCamera& camera);

/// fastSettings() with time limits that a busy machine keeps, too.
TelvoConnectionSettings patientSettings();
/// patientSettings() with requests through features instead of the serial line.
TelvoConnectionSettings featureSettings();
/// patientSettings() that give an incomplete frame up soon.
TelvoConnectionSettings incompleteFrameSettings();
/// patientSettings() that wait for a next frame a short time only.
TelvoConnectionSettings lostFrameSettings();

struct FrameRange {
    std::uint32_t sequence = 0;
    std::uint32_t first = 0;
    std::uint32_t count = 0;
};

/// What a wait for a block gave; the frames are copied.
struct Block {
    std::uint32_t status = 4711; // none of the library's
    std::int64_t frames = -1;
    std::vector<std::uint8_t> bytes{};
};

std::int32_t requestBlock(const Host& host, const FrameRange& range);
Block collectBlock(const Host& host, const camera::VirtualCamera& camera);

/// The frames as the camera recorded them, one after the other.
std::vector<std::uint8_t> recordedBytes(const camera::VirtualCamera& camera,
                                        const FrameRange& range);
/// Frames in a sequence, as the camera knows.
std::uint32_t recordedFrames(const camera::VirtualCamera& camera, std::uint32_t sequence);

/// Whether both have the same bytes; tells the first frame that differs.
testing::AssertionResult sameFrames(const std::vector<std::uint8_t>& got,
                                    const std::vector<std::uint8_t>& expected,
                                    std::size_t frameSize);
/// Collects the block that was asked for: whether it is complete and as recorded.
testing::AssertionResult collectsRecorded(const Host& host, const camera::VirtualCamera& camera,
                                          const FrameRange& range);
/// Asks for a block and collects it.
testing::AssertionResult readsRecorded(const Host& host, const camera::VirtualCamera& camera,
                                       const FrameRange& range);
/// Reads a whole sequence in as many blocks as it takes.
testing::AssertionResult readsWholeSequence(const Host& host, const camera::VirtualCamera& camera,
                                            std::uint32_t sequence);

/// A camera that has recorded before the host comes.
class RecordedCameraTest : public testing::Test
{
  protected:
    void open(const camera::CameraOptions& options,
              const TelvoConnectionSettings& settings = patientSettings());
    /// With a memory for so many frames, and a trailer of 10 frames.
    void openFourSequences(std::uint32_t frames,
                           const TelvoConnectionSettings& settings = patientSettings());

    std::unique_ptr<camera::VirtualCamera> camera;
    Host host;
};

#endif
