/// What single calls cost: a register's round trip on loopback, connect and initialise, and an
/// export that touches no device.
#include "HostSettings.h"
#include "PvDevice.h"
#include "TelvoDll.h"
#include "VirtualCamera.h"

#include <benchmark/benchmark.h>
#include <memory>

namespace
{

std::unique_ptr<camera::VirtualCamera> startCamera()
{
    auto started = std::make_unique<camera::VirtualCamera>(
        camera::CameraOptions{.address = "127.0.0.52", .userSetsPrepared = true});
    return started->start() ? nullptr : std::move(started);
}

void registerRoundTrip(benchmark::State& state)
{
    const auto camera = startCamera();
    PvDevice device;
    if (camera == nullptr || !device.Connect("127.0.0.52", PvAccessType::Exclusive).IsOK()) {
        state.SkipWithError("no camera");
        return;
    }
    auto& temperature = dynamic_cast<PvGenInteger&>(*device.GetGenParameters()->Get("Temperature"));
    for ([[maybe_unused]] auto _ : state) {
        std::int64_t value = 0;
        benchmark::DoNotOptimize(temperature.GetValue(value));
    }
}
// Repeated, so that the median of the repetitions is printed.
BENCHMARK(registerRoundTrip)
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime()
    ->MinTime(0.05)
    ->Repetitions(21)
    ->ReportAggregatesOnly();

/// The pauses that connect and initialise make by their own rules, in milliseconds: 100 after each
/// stream parameter (packet size; inter-packet delay, eight more of which the heartbeat timeout
/// counts twice; the delay again for playback) and 100 between the two stop commands.
constexpr double kPrescribedPauses = 100 * (1 + 1 + 9 + 1 + 1);

void connectAndInitialise(benchmark::State& state)
{
    const auto camera = startCamera();
    const TelvoConnectionSettings settings = hostSettings(1500);
    double total = 0;
    for ([[maybe_unused]] auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        const bool ready =
            camera != nullptr &&
            expConnectGrabber(camera->macText().c_str(), "127.0.0.52", 1, &settings, 1) == 0 &&
            expInitializeGrabber(&settings, 1) == 0;
        total += std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
                     .count();
        expDisconnectGrabber(1);
        if (!ready) {
            state.SkipWithError("connect or initialise failed");
            return;
        }
    }
    state.counters["ms_beyond_pauses"] =
        total / static_cast<double>(state.iterations()) - kPrescribedPauses;
}
BENCHMARK(connectAndInitialise)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

void exportWithoutDevice(benchmark::State& state)
{
    const auto camera = startCamera();
    const TelvoConnectionSettings settings{};
    if (camera == nullptr ||
        expConnectGrabber(camera->macText().c_str(), "127.0.0.52", 1, &settings, 1) != 0) {
        state.SkipWithError("no camera");
        return;
    }
    for ([[maybe_unused]] auto _ : state) {
        std::uint8_t isColour = 0;
        double factors[3] = {};
        benchmark::DoNotOptimize(
            expGetColorInformation(&isColour, &factors[0], &factors[1], &factors[2], 1));
    }
    expDisconnectGrabber(1);
}
BENCHMARK(exportWithoutDevice);

} // namespace

BENCHMARK_MAIN();
