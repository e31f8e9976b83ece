#include "RecordingFiles.h"

#include <fstream>
#include <stdexcept>
#include <string>

namespace camera
{

namespace
{

void writeFrames(const VirtualCamera& camera, std::uint32_t sequence,
                 const std::filesystem::path& path)
{
    std::ofstream file(path, std::ios::binary);
    for (std::uint32_t index = 0; camera.recordedFrame(sequence, index); ++index) {
        const auto frame = camera.recordedBytes(sequence, index);
        file.write(reinterpret_cast<const char*>(frame.data()),
                   static_cast<std::streamsize>(frame.size()));
    }
    file.close();
    if (!file) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

} // namespace

void saveRecordings(const VirtualCamera& camera, const std::filesystem::path& folder)
{
    std::filesystem::create_directories(folder);
    for (std::uint32_t sequence = 0; camera.recordedFrame(sequence, 0); ++sequence) {
        const auto name = camera.options().address + "-" + std::to_string(sequence) + ".raw";
        const auto unfinished = folder / (name + ".part");
        writeFrames(camera, sequence, unfinished);
        std::filesystem::rename(unfinished, folder / name);
    }
}

} // namespace camera
