#include "CameraModel.h"

#include "AsciiText.h"
#include "ImageGeometry.h"
#include "LogText.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace
{

/// A model belongs to the first row of which its lower-cased name contains one of the two marks.
struct ModelRule {
    std::string_view mark;
    std::string_view otherMark;
    std::string_view caseMark; ///< names that contain it have the case flag
    std::int32_t type;
    std::int32_t fixedMaxFps = 0;
    LogText<> found{};
};

// The case flag is uneven on purpose: it tells the first-named model of a pair within one family,
// and the "tovi" line from the others elsewhere.
constexpr ModelRule kRules[] = {
    {"quenloft", "quenloft", "quenloft", 0},
    {"fenrow lite", "fenrow lite", "fenrow lite", 3, 1000,
     "----- checkCameraType() Used Camera Type: ORVALE6 Fenrow Lite"},
    {"fenrow 1-hr", "fenrow 2-hr", "fenrow 1-hr", 1},
    {"fenrow 4", "fenrow 5", "fenrow 4", 1},
    {"fenrow", "fenrow", "fenrow 1", 0},
    {"tovi1", "quor6", "tovi", 0},
    {"tovi2", "quor7", "tovi", 1},
    {"", "", "tovi", 2}, // every other name
};

/// For cameras that do not say their sensor's size. @return null: the type has none
const ImageSize* defaultSensorSize(std::int32_t cameraType)
{
    static constexpr ImageSize kType0{1280, 1024};
    static constexpr ImageSize kType1{1696, 1710};
    static constexpr ImageSize kType3{708, 528};
    switch (cameraType) {
    case 0:
        return &kType0;
    case 1:
        return &kType1;
    case 3:
        return &kType3;
    default:
        return nullptr;
    }
}

} // namespace

CameraModel checkCameraType(const char* modelName)
{
    std::string name(modelName);
    std::ranges::transform(name, name.begin(), toLowerAscii);
    logLine("Used Camera Model: %s", name.c_str());

    const auto contains = [&](std::string_view mark) {
        return name.find(mark) != std::string::npos;
    };
    const auto* const rule = std::ranges::find_if(kRules, [&](const ModelRule& row) {
        return contains(row.mark) || contains(row.otherMark);
    });
    rule->found.log();
    const CameraModel model{.type = rule->type,
                            .caseFlag = static_cast<std::uint8_t>(contains(rule->caseMark) ? 1 : 0),
                            .fixedMaxFps = rule->fixedMaxFps};
    logLine("--- Used Camera Type %d,  Case: %d", model.type, model.caseFlag);
    return model;
}

ImageSize readSensorSize(CameraSettings& camera, const CameraModel& model)
{
    constexpr std::int32_t kUnknown = -1;
    const ImageSize size{.width = readOrRecall(camera, kGetMaxWidth).value_or(kUnknown),
                         .height = readOrRecall(camera, kGetMaxHeight).value_or(kUnknown)};
    logLine("------------- GENexpGetUsedCameraType: %d maxWidth %d maxHeight %d fixedMaxFps %d",
            model.type, size.width, size.height, model.fixedMaxFps);
    const ImageSize* const own = defaultSensorSize(model.type);
    return (size.width <= 0 || size.height <= 0) && own != nullptr ? *own : size;
}
