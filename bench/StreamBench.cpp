/// What the stream receiver takes on loopback: virtual camera to PvPipeline, 1280x1024 Mono8, with
/// packets of 1500 and 9000 bytes, as fast as the camera sends and paced at 2 GB/s; packets that
/// the camera hands to the system joined, and single as from a cable. Camera and receiver are one
/// process and share the machine's cores. Needs the loopback addresses for itself:
/// scripts/in-own-network.sh.
#include "LiveHost.h"
#include "Require.h"
#include "VirtualCamera.h"

#include <chrono>
#include <cstdio>

namespace
{

using gige::net::SendMode;

constexpr const char* kAddress = "127.0.0.51";
constexpr std::uint64_t kPacedRate = 2'000'000'000; // bytes per second

void report(SendMode send, std::int64_t packetSize, bool paced, std::chrono::seconds time)
{
    camera::VirtualCamera camera({.address = kAddress,
                                  .unpaced = true,
                                  .unpacedLimit = paced ? kPacedRate : 0,
                                  .send = send});
    require(!camera.start(), "starting the camera");
    LiveHost host(kAddress, {.packetSize = packetSize});
    const double before = host.receiverSeconds();
    const LiveFigures figures = host.take(time);
    const double used = host.receiverSeconds() - before;
    std::printf("%s packets of %4lld bytes, %-13s %5.2f GB/s received  %6lld frames whole  %5lld "
                "incomplete  %3lld dropped  receiver %.3f CPU s/GB\n",
                send == SendMode::Joined ? "joined" : "single", static_cast<long long>(packetSize),
                paced ? "paced 2 GB/s:" : "unpaced:", figures.bytes / figures.seconds * 1e-9,
                static_cast<long long>(figures.whole), static_cast<long long>(figures.failed),
                static_cast<long long>(figures.dropped), used / figures.bytes * 1e9);
}

} // namespace

int main()
{
    using namespace std::chrono_literals;
    return exitStatus([] {
        for (const SendMode send : {SendMode::Joined, SendMode::Single}) {
            for (const std::int64_t packetSize : {1500, 9000}) {
                report(send, packetSize, false, 5s);
                // Single packets at that pace are more than two cores manage.
                if (send == SendMode::Joined) {
                    report(send, packetSize, true, 10s);
                }
            }
        }
    });
}
