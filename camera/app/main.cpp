#include "CommandLine.h"
#include "RecordingFiles.h"
#include "VirtualCamera.h"

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <mutex>
#include <sstream>
#include <thread>
#include <utility>

namespace
{

using camera::CommandLine;
using camera::VirtualCamera;
using Cameras = std::vector<std::unique_ptr<VirtualCamera>>;
using Clock = std::chrono::steady_clock;

constexpr int kUsageError = 2;
constexpr std::chrono::milliseconds kStep{20};

volatile std::sig_atomic_t gEnd = 0;

void end(int /*signal*/)
{
    gEnd = 1;
}

void prepare(camera::Faults& faults, const CommandLine& line)
{
    faults.setPacketRates(line.rates);
    faults.setFrameLoss(line.frameLoss);
    for (const auto& fault : line.packetFaults) {
        faults.add(fault);
    }
    for (const auto& fault : line.frameFaults) {
        faults.add(fault);
    }
    for (const auto& fault : line.accessFaults) {
        faults.add(fault);
    }
    faults.limitSerial(line.serialLimit);
    faults.clampPacketSize(line.packetSizeLimit);
    faults.ignoreTestPackets(line.ignoreTestPackets);
    faults.requireOrderedRange(line.orderedRange);
}

std::unique_ptr<VirtualCamera> startCamera(const CommandLine& line, const std::string& address)
{
    camera::CameraOptions options = line.camera;
    options.address = address;
    auto started = std::make_unique<VirtualCamera>(options);
    prepare(started->faults(), line);
    if (const auto error = started->start()) {
        std::cerr << "telvo-camera: " << *error << '\n';
        return nullptr;
    }
    std::cout << "telvo-camera: " << options.model << " listens on " << address << ", MAC "
              << started->macText()
              << (started->hearsBroadcasts() ? "" : " (not to be found by broadcast)") << std::endl;
    return started;
}

/// Lines of standard input, brought by a thread of their own since reading cannot be interrupted.
struct CommandInput {
    std::mutex lock; // guards lines
    std::vector<std::string> lines;

    std::vector<std::string> take()
    {
        const std::scoped_lock guard(lock);
        return std::exchange(lines, {});
    }
};

void readCommands(const std::shared_ptr<CommandInput>& input)
{
    std::thread([input] {
        std::string text;
        while (std::getline(std::cin, text)) {
            const std::scoped_lock guard(input->lock);
            input->lines.push_back(text);
        }
    }).detach();
}

void obey(VirtualCamera& device, const CommandLine& line, const std::string& text)
{
    std::istringstream words(text);
    std::string command;
    words >> command;
    if (command == "trigger") {
        device.trigger();
    } else if (command == "high" || command == "low") {
        device.setTriggerInput(command == "high");
    } else if (command == "silent" || command == "talk") {
        device.faults().setSilent(command == "silent");
    } else if (command == "lose") {
        camera::PacketRates rates = line.rates;
        if (words >> rates.lose && rates.lose >= 0 && rates.lose <= 1) {
            device.faults().setPacketRates(rates);
        } else {
            std::cerr << "telvo-camera: '" << text << "' has no share from 0 to 1\n";
        }
    } else if (command == "quit") {
        gEnd = 1;
    } else if (!command.empty()) {
        std::cerr << "telvo-camera: no command '" << command << "'\n";
    }
}

/// Does what the command line wants done over time, until the end is asked for.
void run(const CommandLine& line, const Cameras& cameras)
{
    const auto input = std::make_shared<CommandInput>();
    if (line.readCommands) {
        readCommands(input);
    }
    const auto start = Clock::now();
    auto nextTrigger = start + line.triggerEvery;
    while (gEnd == 0) {
        std::this_thread::sleep_for(kStep);
        const auto now = Clock::now();
        const bool pulse = line.triggerEvery.count() > 0 && now >= nextTrigger;
        nextTrigger += pulse ? line.triggerEvery : std::chrono::milliseconds(0);
        const auto commands = input->take();
        for (const auto& device : cameras) {
            if (pulse) {
                device->trigger();
            }
            if (line.silentAfter.count() > 0) {
                const auto from = start + line.silentAfter;
                const bool back = line.silentFor.count() > 0 && now >= from + line.silentFor;
                device->faults().setSilent(now >= from && !back);
            }
            for (const std::string& command : commands) {
                obey(*device, line, command);
            }
        }
    }
}

/// What the camera has sent, for who asks himself where his images are.
void sumUp(const VirtualCamera& device)
{
    const camera::CameraCounters counters = device.log().counters();
    std::cout << "telvo-camera: " << device.options().address << " sent " << counters.blocks
              << " images in " << counters.packets << " packets, " << counters.resentPackets
              << " of them again, and left out " << counters.leftOut << " images" << std::endl;
}

int runCameras(const CommandLine& line)
{
    Cameras cameras;
    for (const std::string& address : line.addresses) {
        cameras.push_back(startCamera(line, address));
        if (!cameras.back()) {
            return kUsageError;
        }
    }
    std::signal(SIGINT, end);
    std::signal(SIGTERM, end);
    run(line, cameras);
    for (const auto& device : cameras) {
        sumUp(*device);
    }
    if (!line.recordingsFolder.empty()) {
        for (const auto& device : cameras) {
            camera::saveRecordings(*device, line.recordingsFolder);
        }
    }
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return runCameras(camera::parseCommandLine(argc, argv));
    } catch (const camera::CommandLineExit& leave) {
        (leave.status == 0 ? std::cout : std::cerr) << leave.text << '\n';
        return leave.status;
    } catch (const std::exception& error) {
        std::cerr << "telvo-camera: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
