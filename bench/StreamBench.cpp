/**
 * What the stream receiver takes on loopback: virtual camera to PvPipeline, 1280x1024 Mono8, with
 * packets of 1500 and 9000 bytes, as fast as the camera sends and paced at 2 GB/s. Camera and
 * receiver share the machine's cores.
 */
#include "PvDevice.h"
#include "PvPipeline.h"
#include "Require.h"
#include "VirtualCamera.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>

namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::int64_t kWidth = 1280;
constexpr std::int64_t kHeight = 1024;
constexpr std::uint64_t kPacedRate = 2'000'000'000; // bytes per second

void setInteger(PvDevice& device, const char* name, std::int64_t value)
{
    auto* feature = dynamic_cast<PvGenInteger*>(device.GetGenParameters()->Get(name));
    require(feature != nullptr && feature->SetValue(value).IsOK(), name);
}

std::set<std::string> threads()
{
    std::set<std::string> ids;
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
        ids.insert(task.path().filename());
    }
    return ids;
}

/// CPU seconds that a thread of this process has used.
double cpuSeconds(const std::string& thread)
{
    double nanoseconds = 0;
    std::ifstream("/proc/self/task/" + thread + "/schedstat") >> nanoseconds;
    return nanoseconds * 1e-9;
}

struct Outcome {
    double seconds = 0;
    std::int64_t whole = 0;
    std::int64_t failed = 0;
    std::int64_t dropped = 0; // no buffer was free when they began
    double bytes = 0;         // received, also of incomplete frames
    double receiverSeconds = 0;
};

class Run
{
  public:
    Run(std::int64_t packetSize, bool paced)
        : mCamera(
              {.address = "127.0.0.51", .unpaced = true, .unpacedLimit = paced ? kPacedRate : 0})
    {
        require(!mCamera.start(), "starting the camera");
        require(mDevice.Connect("127.0.0.51", PvAccessType::Exclusive).IsOK(), "connecting");
        openStream();
        require(mDevice.SetStreamDestination(mStream.GetLocalIPAddress(), mStream.GetLocalPort(), 0)
                    .IsOK(),
                "setting the destination");
        setInteger(mDevice, "Width", kWidth);
        setInteger(mDevice, "Height", kHeight);
        setInteger(mDevice, "GevSCPSPacketSize", packetSize);
        auto* source =
            dynamic_cast<PvGenEnum*>(mDevice.GetGenParameters()->Get("AcquisitionSource"));
        require(source != nullptr && source->SetValue("Live").IsOK(), "choosing live images");
    }

    Outcome take(std::chrono::seconds time)
    {
        PvPipeline pipeline(&mStream);
        pipeline.SetBufferSize(static_cast<std::uint32_t>(kWidth * kHeight));
        require(pipeline.SetBufferCount(64).IsOK(), "setting the buffer count");
        require(pipeline.Start().IsOK(), "starting the pipeline");
        execute("AcquisitionStart");
        next(pipeline); // the first frame starts the clock
        const double receiverBefore = cpuSeconds(mReceiver);
        const std::int64_t bytesBefore = reading("BytesReceived");
        const auto start = Clock::now();
        Outcome outcome;
        while (Clock::now() - start < time) {
            (next(pipeline) ? outcome.whole : outcome.failed) += 1;
        }
        outcome.seconds = std::chrono::duration<double>(Clock::now() - start).count();
        outcome.receiverSeconds = cpuSeconds(mReceiver) - receiverBefore;
        outcome.bytes = static_cast<double>(reading("BytesReceived") - bytesBefore);
        outcome.dropped = reading("BlocksDropped");
        execute("AcquisitionStop");
        return outcome;
    }

  private:
    void openStream()
    {
        const auto before = threads();
        require(mStream.Open("127.0.0.51", 0, 0, "").IsOK(), "opening the stream");
        for (const std::string& thread : threads()) {
            if (!before.contains(thread)) {
                mReceiver = thread;
            }
        }
    }

    std::int64_t reading(const char* name)
    {
        std::int64_t value = 0;
        auto* counter = dynamic_cast<PvGenInteger*>(mStream.GetParameters()->Get(name));
        require(counter != nullptr && counter->GetValue(value).IsOK(), name);
        return value;
    }

    bool next(PvPipeline& pipeline)
    {
        PvBuffer* buffer = nullptr;
        PvResult operation;
        require(pipeline.RetrieveNextBuffer(&buffer, 5000, &operation).IsOK(), "retrieving");
        pipeline.ReleaseBuffer(buffer);
        return operation.IsOK();
    }

    void execute(const char* name)
    {
        auto* command = dynamic_cast<PvGenCommand*>(mDevice.GetGenParameters()->Get(name));
        require(command != nullptr && command->Execute().IsOK(), name);
    }

    camera::VirtualCamera mCamera;
    PvDevice mDevice;
    PvStream mStream;
    std::string mReceiver; // the stream's one thread
};

void report(std::int64_t packetSize, bool paced, std::chrono::seconds time)
{
    const Outcome outcome = Run(packetSize, paced).take(time);
    std::printf("packets of %4lld bytes, %-13s %5.2f GB/s received  %6lld frames whole  %5lld "
                "incomplete  %3lld dropped  receiver %.3f CPU s/GB\n",
                static_cast<long long>(packetSize),
                paced ? "paced 2 GB/s:" : "unpaced:", outcome.bytes / outcome.seconds * 1e-9,
                static_cast<long long>(outcome.whole), static_cast<long long>(outcome.failed),
                static_cast<long long>(outcome.dropped),
                outcome.receiverSeconds / outcome.bytes * 1e9);
}

} // namespace

int main()
{
    using namespace std::chrono_literals;
    return exitStatus([] {
        for (const std::int64_t packetSize : {1500, 9000}) {
            report(packetSize, false, 5s);
            report(packetSize, true, 10s);
        }
    });
}
