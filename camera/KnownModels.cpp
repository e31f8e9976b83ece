#include "KnownModels.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace camera
{
namespace
{

constexpr std::uint64_t kPixelsPerSecond = 1'400'000'000;
constexpr SensorSize kWide{1280, 1024};
constexpr SensorSize kTall{1696, 1710};
constexpr SensorSize kSmall{708, 528};

constexpr std::array kModels{
    CameraModel{"Quenloft", kWide},
    CameraModel{"ORVALE6 Fenrow Lite", kSmall, 1000},
    CameraModel{"ORVALE6 Fenrow 1", kWide},
    CameraModel{"ORVALE6 Fenrow 3", kWide},
    CameraModel{"ORVALE6 Fenrow 1-HR", kTall},
    CameraModel{"ORVALE6 Fenrow 2-HR", kTall},
    CameraModel{"ORVALE6 Fenrow 4", kTall},
    CameraModel{"ORVALE6 Fenrow 5", kTall},
    CameraModel{"TOVI1", kWide},
    CameraModel{"QUOR6", kWide},
    CameraModel{"TOVI2", kTall},
    CameraModel{"QUOR7", kTall},
    CameraModel{"TOVI9", kWide},
    CameraModel{"QUOR9", kWide},
};

bool sameText(std::string_view left, std::string_view right)
{
    return std::ranges::equal(left, right, [](unsigned char a, unsigned char b) {
        return std::tolower(a) == std::tolower(b);
    });
}

} // namespace

std::span<const CameraModel> knownModels()
{
    return kModels;
}

CameraModel modelFor(std::string_view name)
{
    const auto* const known = std::ranges::find_if(
        kModels, [name](const CameraModel& model) { return sameText(model.name, name); });
    return known == kModels.end() ? CameraModel{.name = name} : *known;
}

std::uint32_t fastestRate(const CameraModel& model, std::uint32_t width, std::uint32_t height)
{
    const std::uint64_t pixels = std::max<std::uint64_t>(std::uint64_t{width} * height, 1);
    const std::uint64_t readable = std::max<std::uint64_t>(kPixelsPerSecond / pixels, 1);
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(readable, model.fastestRate));
}

} // namespace camera
