// Records until there are 50 frames, reads them back, and writes the brightest as a PGM picture.
#include <telvo.hpp>

#include <fstream>
#include <iostream>
#include <numeric>
#include <vector>

namespace
{

constexpr std::int32_t kFrames = 50;

double brightness(const telvo::Frame& frame)
{
    const auto pixels = frame.image.subspan(TELVO_FRAME_HEADER_SIZE);
    return std::accumulate(pixels.begin(), pixels.end(), 0.0) / static_cast<double>(pixels.size());
}

void record(telvo::Camera& camera)
{
    telvo::Recording recording = camera.record();
    while (recording.frames() < kFrames && !recording.isOver()) {
        (void)recording.next(std::chrono::milliseconds(100)); // a preview, if one comes
    }
    recording.stop();
}

std::vector<std::uint8_t> brightestFrame(telvo::Camera& camera)
{
    std::vector<std::uint8_t> brightest;
    double most = -1;
    telvo::BlockTransfer transfer = camera.readBlocks();
    transfer.readAll(0, 0, kFrames, [&](const telvo::Frame& frame) {
        if (const double value = brightness(frame); value > most) {
            most = value;
            brightest.assign(frame.image.begin(), frame.image.end());
        }
    });
    return brightest;
}

} // namespace

int main(int count, char** arguments)
{
    if (count < 4) {
        std::cerr << "usage: " << arguments[0] << " MAC IP PICTURE.pgm\n";
        return 2;
    }
    try {
        telvo::Camera camera(arguments[1], arguments[2]);
        std::cout << camera.text("model") << ' ' << camera.text("serialNumber") << '\n';
        camera.set(telvo::frameRate, 200);
        record(camera);
        std::cout << camera.recordedFrames() << " frames recorded\n";
        const auto picture = brightestFrame(camera);
        const telvo::Size size = camera.size();
        std::ofstream file(arguments[3], std::ios::binary);
        file << "P5 " << size.width << ' ' << size.height << " 255\n";
        file.write(reinterpret_cast<const char*>(picture.data()),
                   static_cast<std::streamsize>(picture.size()));
        return file.flush() ? 0 : 1;
    } catch (const telvo::Error& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
