#include "RecordedCamera.h"

#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

void RecordedCamera::switchOn(const camera::CameraOptions& options)
{
    camera = std::make_unique<camera::VirtualCamera>(options);
    ASSERT_FALSE(camera->start());
}

void RecordedCamera::start(const camera::CameraOptions& options)
{
    switchOn(options);
    ASSERT_TRUE(hasFinished(*camera));
}

std::vector<std::string> RecordedCamera::download(const std::string& name,
                                                  const std::vector<std::string>& more) const
{
    std::vector<std::string> words{"download", "--camera", camera->options().address, "--out",
                                   folder.path() / name};
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

ToolOutcome RecordedCamera::downloads(const std::string& name,
                                      const std::vector<std::string>& more) const
{
    ToolOutcome result = runTool(download(name, more));
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    return result;
}

std::string RecordedCamera::recorded(std::uint32_t first, std::uint32_t count,
                                     std::uint32_t sequence) const
{
    const std::vector<std::uint8_t> bytes =
        recordedBytes(*camera, {.sequence = sequence, .first = first, .count = count});
    return {bytes.begin(), bytes.end()};
}

std::size_t RecordedCamera::frameSize() const
{
    return std::size_t{camera->recordedView().width} * camera->recordedView().height;
}

std::string contents(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

nlohmann::json jsonOf(const fs::path& path)
{
    return nlohmann::json::parse(contents(path));
}

std::size_t entries(const fs::path& folder)
{
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

std::string withoutHeaders(std::string frames, std::size_t width, std::size_t frameSize)
{
    for (std::size_t at = 0; at < frames.size(); at += frameSize) {
        frames.replace(at, 16, frames, at + 2 * width, 16);
    }
    return frames;
}
