/// What a host process uses of the processor per GB of live pictures, 1280x1024 Mono8: packets that
/// the camera hands to the system joined, and single as from a cable; of 1500 and 9000 bytes; at
/// 115 and 400 MB/s; through the packet ring, where it is allowed, and through the socket. Beside
/// each the same figure of an independent program (Debian's aravis-tools), if it is there, and of
/// copying the pictures alone: what this machine takes at least. The camera is a process of its
/// own. Needs the loopback addresses for itself:
/// scripts/in-own-network.sh. Arguments: seconds per figure, 5 without; then joined or single, both
/// without.
#include "CameraProcess.h"
#include "CopyAlone.h"
#include "LiveHost.h"
#include "PeerProgram.h"
#include "ProcessUse.h"
#include "Require.h"

#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace
{

using gige::net::SendMode;

constexpr const char* kAddress = "127.0.0.51";
constexpr const char* kPeer = "arv-camera-test-0.8";
constexpr std::int64_t kWidth = 1280;
constexpr std::int64_t kHeight = 1024;
constexpr std::chrono::milliseconds kWarmUp{2500}; // until every receiver has found its way

const char* nameOf(SendMode send)
{
    return send == SendMode::Joined ? "joined" : "single";
}

struct Way {
    SendMode send = SendMode::Single;
    std::int64_t packetSize = 1500;
    std::uint64_t bytesPerSecond = 0;
    std::chrono::seconds time{0};

    camera::CameraOptions camera() const
    {
        camera::CameraOptions options{.address = kAddress, .unpaced = true};
        options.unpacedLimit = bytesPerSecond;
        options.send = send;
        options.settings = {{camera::FeatureId::Width, kWidth},
                            {camera::FeatureId::Height, kHeight}};
        return options;
    }
};

void reportOurs(const Way& way, bool ring)
{
    const CameraProcess camera({way.camera()});
    LiveHost host(
        kAddress,
        {.width = kWidth, .height = kHeight, .packetSize = way.packetSize, .packetRing = ring});
    host.take(kWarmUp);
    const double before = cpuSeconds();
    const double receiverBefore = host.receiverSeconds();
    const LiveFigures figures = host.take(way.time);
    const double used = cpuSeconds() - before;
    const double receiver = host.receiverSeconds() - receiverBefore;
    const std::int64_t lost = figures.failed + figures.dropped;
    const bool inUse = host.reading("PacketRingInUse") != 0;
    std::printf("  ours, %-22s %.3f CPU s/GB (receiving thread %.3f), %" PRId64 " of %" PRId64
                " frames lost\n",
                inUse  ? "ring:"
                : ring ? "ring allowed, socket:"
                       : "socket:",
                used / figures.bytes * 1e9, receiver / figures.bytes * 1e9, lost,
                lost + figures.whole);
}

std::string lineWith(const std::string& text, const std::string& word)
{
    const std::size_t at = text.find(word);
    return at == std::string::npos ? "no " + word : text.substr(at, text.find('\n', at) - at);
}

void reportPeer(const Way& way, bool ring)
{
    const CameraProcess camera({way.camera()});
    const auto duration = std::chrono::ceil<std::chrono::seconds>(way.time + 2 * kWarmUp);
    std::vector<std::string> command{kPeer,
                                     "-n",
                                     kAddress,
                                     "-i",
                                     std::to_string(way.packetSize),
                                     "-j",
                                     "never",
                                     "-w",
                                     std::to_string(kWidth),
                                     "-h",
                                     std::to_string(kHeight),
                                     "--duration",
                                     std::to_string(duration.count())};
    if (!ring) {
        command.emplace_back("--no-packet-socket");
    }
    PeerProgram peer(command);
    std::this_thread::sleep_for(kWarmUp);
    const double before = peer.cpuSeconds();
    const std::uint64_t sentBefore = camera.bytesSent();
    std::this_thread::sleep_for(way.time);
    const double used = peer.cpuSeconds() - before;
    const auto bytes = static_cast<double>(camera.bytesSent() - sentBefore);
    const std::string output = peer.finish();
    std::printf(
        "  peer, %-22s %.3f CPU s/GB, %s, %s\n", ring ? "ring:" : "socket:", used / bytes * 1e9,
        lineWith(output, "n_completed_buffers").c_str(), lineWith(output, "n_failures").c_str());
}

void report(const Way& way)
{
    std::printf("%s packets of %lld bytes at %llu MB/s\n", nameOf(way.send),
                static_cast<long long>(way.packetSize),
                static_cast<unsigned long long>(way.bytesPerSecond / 1'000'000));
    std::printf("  copying them alone:          %.3f CPU s/GB\n",
                1e9 * copyAlone(kWidth * kHeight, static_cast<std::size_t>(way.packetSize),
                                way.bytesPerSecond, way.time));
    for (const bool ring : {true, false}) {
        reportOurs(way, ring);
        if (PeerProgram::isInstalled(kPeer)) {
            reportPeer(way, ring);
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    const std::chrono::seconds time(argc > 1 ? std::atoi(argv[1]) : 5);
    const std::string only = argc > 2 ? argv[2] : "";
    return exitStatus([&] {
        for (const SendMode send : {SendMode::Joined, SendMode::Single}) {
            if (!only.empty() && only != nameOf(send)) {
                continue;
            }
            for (const std::int64_t packetSize : {1500, 9000}) {
                for (const std::uint64_t rate : {115'000'000U, 400'000'000U}) {
                    report({send, packetSize, rate, time});
                }
            }
        }
    });
}
