// Sorts cameras into types by their model name.

#include "AsciiText.h"
#include "CQuorGrabber.h"
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

struct SensorSize {
    std::int32_t width;  // pixels
    std::int32_t height; // pixels
};

/// For cameras that do not say their sensor's size. @return null: the type has none
const SensorSize* defaultSensorSize(std::int32_t cameraType)
{
    static constexpr SensorSize kType0{1280, 1024};
    static constexpr SensorSize kType1{1696, 1710};
    static constexpr SensorSize kType3{708, 528};
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

std::int32_t CQuorGrabber::checkCameraType(const char* modelName)
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
    mModel = {.type = rule->type,
              .caseFlag = static_cast<std::uint8_t>(contains(rule->caseMark) ? 1 : 0),
              .fixedMaxFps = rule->fixedMaxFps};
    logLine("--- Used Camera Type %d,  Case: %d", mModel.type, mModel.caseFlag);
    return mModel.type;
}

std::int32_t CQuorGrabber::getUsedCameraType(std::uint8_t* caseFlag, std::int32_t* maxWidth,
                                             std::int32_t* maxHeight)
{
    *maxWidth = getMaxWidth();
    *maxHeight = getMaxHeight();
    *caseFlag = mModel.caseFlag;
    logLine("------------- GENexpGetUsedCameraType: %d maxWidth %d maxHeight %d fixedMaxFps %d",
            mModel.type, *maxWidth, *maxHeight, mModel.fixedMaxFps);
    const SensorSize* const size = defaultSensorSize(mModel.type);
    if ((*maxWidth <= 0 || *maxHeight <= 0) && size != nullptr) {
        *maxWidth = size->width;
        *maxHeight = size->height;
    }
    return mModel.type;
}
