#include "LiveView.h"

#include "Terminal.h"

#include <cmath>
#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace telvo
{

namespace
{

constexpr std::chrono::milliseconds kScreenInterval{100};
constexpr std::uint32_t kTextRows = 3; // histogram, status, keys
constexpr double kExposureStep = 1.25;

constexpr const char* kBegin = "\x1b[?1049h\x1b[?25l\x1b[2J"; // a screen of its own, no cursor
constexpr const char* kEnd = "\x1b[?25h\x1b[?1049l";
constexpr const char* kHome = "\x1b[H";
constexpr const char* kEndOfLine = "\x1b[K\r\n";

TerminalGraphics graphicsHere()
{
    // NOLINTBEGIN(concurrency-mt-unsafe): nothing here changes the environment
    const char* const term = std::getenv("TERM");
    return graphicsOf(term == nullptr ? "" : term, std::getenv("KITTY_WINDOW_ID") != nullptr);
    // NOLINTEND(concurrency-mt-unsafe)
}

std::string valueOf(const CameraSession& camera, const char* setting)
{
    const auto text = camera.read(findSetting(setting));
    return text ? text->withUnit() : "?";
}

} // namespace

LiveView::LiveView(const CameraSession& camera)
    : mCamera(camera),
      mGraphics(graphicsHere()),
      mExposure(valueOf(camera, "exposure")),
      mGain(valueOf(camera, "gain"))
{
    showUtf8();
    std::cout << kBegin << std::flush;
}

LiveView::~LiveView()
{
    std::cout << kEnd << std::flush;
}

bool LiveView::show(GrayView frame, double rate, std::uint64_t lost)
{
    const Clock::time_point now = Clock::now();
    if (now < mNextDraw) {
        return true;
    }
    mNextDraw = now + kScreenInterval;
    const TerminalSize size = terminalSize();
    const TerminalSize room{size.columns, std::max(size.rows, kTextRows + 1) - kTextRows};
    std::cout << kHome << pictureText(frame, room, mGraphics)
              << histogramText(frame, std::min(size.columns, 64U)) << kEndOfLine
              << statusText(frame, rate, lost) << kEndOfLine
              << "e E exposure   g G gain   q end\x1b[K" << std::flush;
    return obeyKeys();
}

std::string LiveView::statusText(GrayView frame, double rate, std::uint64_t lost) const
{
    std::ostringstream text;
    text << frame.width << 'x' << frame.height << "   " << std::fixed << std::setprecision(1)
         << rate << " frames/s   " << lost << " lost   exposure " << mExposure << "   gain "
         << mGain;
    return text.str();
}

bool LiveView::obeyKeys()
{
    while (const auto key = mKeyboard.next()) {
        switch (*key) {
        case 'q':
            return false;
        case 'e':
            change("exposure", 1 / kExposureStep, -1);
            break;
        case 'E':
            change("exposure", kExposureStep, 1);
            break;
        case 'g':
            change("gain", 1, -1);
            break;
        case 'G':
            change("gain", 1, 1);
            break;
        default:
            break;
        }
    }
    return true;
}

/// By the factor, but by the step at least. What the camera refuses stays as it is.
void LiveView::change(const char* setting, double factor, int step)
{
    const auto present = mCamera.read(findSetting(setting));
    if (!present) {
        return;
    }
    const double before = std::strtod(present->value.c_str(), nullptr);
    const double byFactor = std::round(before * factor);
    const double wanted = std::max(0.0, byFactor == before ? before + step : byFactor);
    const auto text = std::to_string(static_cast<std::uint32_t>(wanted));
    mCamera.write({makeAssignment(findSetting(setting), text)});
    mExposure = valueOf(mCamera, "exposure");
    mGain = valueOf(mCamera, "gain");
}

} // namespace telvo
