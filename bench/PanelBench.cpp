/// What the panel costs while a page looks at 30 pictures of 1280x1024 a second, and how long a
/// page waits for a recorded frame.
#include "CameraProcess.h"
#include "PanelPage.h"
#include "Require.h"
#include "ToolPanel.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace
{

using Clock = std::chrono::steady_clock;
using Json = nlohmann::json;

constexpr const char* kAddress = "127.0.0.56";
constexpr std::chrono::seconds kTime{5};
constexpr int kRate = 30; // pictures a second
constexpr int kFrames = 400;
constexpr int kScrubs = 200;

/// Of one core, in this time, while the page does something.
template <typename Work>
double percentWhile(const ToolPanel& panel, Work work)
{
    const double before = panel.cpuSeconds();
    const auto start = Clock::now();
    work(start + kTime);
    const std::chrono::duration<double> time = Clock::now() - start;
    return 100 * (panel.cpuSeconds() - before) / time.count();
}

/// Takes every picture until then. @return how many
int watch(PanelPage& page, Clock::time_point end)
{
    int pictures = 0;
    for (; Clock::now() < end; ++pictures) {
        const Json header = page.awaitPicture();
        page.ask("seen", {{"number", header["number"]}});
    }
    return pictures;
}

void measureLive(const ToolPanel& panel, PanelPage& page)
{
    page.ask("set", {{"values", {{"frame-rate", kRate}}}});
    page.ask("live", {{"on", true}});
    std::this_thread::sleep_for(std::chrono::seconds(1));
    const double alone =
        percentWhile(panel, [](Clock::time_point end) { std::this_thread::sleep_until(end); });
    std::printf("live, no page looks: %.1f %% of a core\n", alone);
    for (const int width : {1280, 640}) {
        page.ask("preview", {{"width", width}});
        int pictures = 0;
        const double all =
            percentWhile(panel, [&](Clock::time_point end) { pictures = watch(page, end); });
        std::printf("live, a page of %d columns: %.1f %% of a core, of that %.1f %% for the page; "
                    "%.1f pictures/s\n",
                    width, all, all - alone,
                    pictures / std::chrono::duration<double>(kTime).count());
        page.ask("preview", {{"width", 0}});
    }
}

/// Milliseconds until each of these frames is there.
template <typename NextFrame>
void measureScrub(PanelPage& page, const char* what, std::chrono::milliseconds pause,
                  NextFrame nextFrame)
{
    std::vector<double> times;
    for (int i = 0; i < kScrubs; ++i) {
        const auto start = Clock::now();
        page.frame(nextFrame(i));
        const std::chrono::duration<double, std::milli> time = Clock::now() - start;
        times.push_back(time.count());
        std::this_thread::sleep_for(pause);
    }
    std::ranges::sort(times);
    std::printf("%s: median %.1f ms, 99 of 100 below %.1f ms\n", what, times[times.size() / 2],
                times[times.size() * 99 / 100]);
}

void measureReview(PanelPage& page)
{
    page.ask("set", {{"values", {{"frame-rate", 500}}}});
    page.ask("arm", {{"mode", "single"}, {"trigger", "none"}, {"frames", kFrames}});
    page.awaitEvent("recording");
    page.ask("recording", Json::object());
    std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same frames each time
    measureScrub(page, "a frame anywhere", std::chrono::milliseconds(0),
                 [&](int) { return static_cast<std::uint32_t>(random() % kFrames); });
    measureScrub(page, "the next frame, 30 a second", std::chrono::milliseconds(33),
                 [](int i) { return static_cast<std::uint32_t>(i); });
}

void measure()
{
    const CameraProcess cameras({{.address = kAddress, .userSetsPrepared = true}});
    const ToolPanel panel(kAddress);
    PanelPage page(panel.port());
    measureLive(panel, page);
    measureReview(page);
}

} // namespace

int main()
{
    return exitStatus(measure);
}
