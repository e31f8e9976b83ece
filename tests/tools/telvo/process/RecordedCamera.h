#ifndef TELVO_TESTS_TOOLS_TELVO_PROCESS_RECORDEDCAMERA_H
#define TELVO_TESTS_TOOLS_TELVO_PROCESS_RECORDEDCAMERA_H

#include "Recording.h"
#include "TemporaryFolder.h"
#include "ToolProcess.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

/// A camera in the test's process that has recorded, and the tool as a process of its own.
class RecordedCamera : public testing::Test
{
  protected:
    void switchOn(const camera::CameraOptions& options);
    /// Switches a camera on that records by itself, and waits for the end of that.
    void start(const camera::CameraOptions& options);

    /// "download" from the camera to a file in the folder, with more arguments.
    std::vector<std::string> download(const std::string& name,
                                      const std::vector<std::string>& more = {}) const;
    /// Runs it, which has to end with 0.
    ToolOutcome downloads(const std::string& name, const std::vector<std::string>& more = {}) const;

    /// All frames of a sequence as the camera has them.
    std::string recorded(std::uint32_t first, std::uint32_t count,
                         std::uint32_t sequence = 0) const;
    std::size_t frameSize() const;

    std::unique_ptr<camera::VirtualCamera> camera;
    TemporaryFolder folder;
};

std::string contents(const std::filesystem::path& path);

nlohmann::json jsonOf(const std::filesystem::path& path);

std::size_t entries(const std::filesystem::path& folder);

/// Frames as pictures show them: the 16 bytes of header are the pixels two rows below.
std::string withoutHeaders(std::string frames, std::size_t width, std::size_t frameSize);

#endif
