#include "RecordingFiles.h"
#include "RawHost.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <thread>

namespace camera
{
namespace
{

using Bytes = std::vector<std::uint8_t>;

class RecordingFiles : public testing::Test
{
  protected:
    RecordingFiles() { std::filesystem::remove_all(folder); }
    ~RecordingFiles() override { std::filesystem::remove_all(folder); }

    static Bytes contentOf(const std::filesystem::path& path)
    {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    const std::filesystem::path folder =
        std::filesystem::path(testing::TempDir()) /
        testing::UnitTest::GetInstance()->current_test_info()->name();
};

TEST_F(RecordingFiles, HoldEveryRecordedFrame)
{
    VirtualCamera camera({.address = "127.0.4.110"});
    ASSERT_FALSE(camera.start());
    RawHost host(camera.options().address);
    host.openStream();
    host.write(FeatureId::Width, 64);
    host.write(FeatureId::Height, 32);
    host.write(FeatureId::AcquisitionFrameRateRaw, 1000);
    EXPECT_EQ(host.execute(FeatureId::RecordStart), 0U);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(host.execute(FeatureId::RecordStop), 0U);

    saveRecordings(camera, folder);
    Bytes expected;
    for (std::uint32_t index = 0; camera.recordedFrame(0, index); ++index) {
        const Bytes frame = camera.recordedBytes(0, index);
        expected.insert(expected.end(), frame.begin(), frame.end());
    }
    EXPECT_EQ(expected.size(), std::size_t{host.read(FeatureId::RecordNumberOfFrames)} * 64 * 32);
    EXPECT_EQ(contentOf(folder / "127.0.4.110-0.raw"), expected);
    const std::filesystem::directory_iterator files(folder);
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST_F(RecordingFiles, AreNoneWithoutARecording)
{
    VirtualCamera camera({.address = "127.0.4.111"});
    ASSERT_FALSE(camera.start());
    saveRecordings(camera, folder);
    EXPECT_TRUE(std::filesystem::is_empty(folder));
}

TEST_F(RecordingFiles, FailWhereAFileIsInTheWay)
{
    const VirtualCamera camera({.address = "127.0.4.112"});
    std::ofstream(folder) << "a file";
    EXPECT_THROW(saveRecordings(camera, folder), std::filesystem::filesystem_error);
    EXPECT_EQ(contentOf(folder).size(), 6U);
}

} // namespace
} // namespace camera
