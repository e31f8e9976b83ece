// What hosts keep in the camera: four data words, of which three hold colour factors, and a name.

#include "CQuorGrabber.h"
#include "LogText.h"
#include "Truncation.h"

namespace
{

struct DataWord {
    const char* feature;
    LogText<std::uint32_t> read;
    LogText<std::uint32_t> written;
};

constexpr DataWord kDataWords[] = {
    {"Data00", "-- GEN getCustomData Data00 %u", "-- GEN setCustomData Data00 %u"},
    {"Data01", "-- GEN getCustomData Data01 %u", "-- GEN setCustomData Data01 %u"},
    {"Data02", "-- GEN getCustomData Data02 %u", "-- GEN setCustomData Data02 %u"},
    {"Data03", "-- GEN getCustomData Data03 %u", "-- GEN setCustomData Data03 %u"},
};

const DataWord* dataWord(std::int32_t index)
{
    const bool isKnown = index >= 0 && index < static_cast<std::int32_t>(std::size(kDataWords));
    return isKnown ? &kDataWords[index] : nullptr;
}

/// A colour factor as its data word: 1.0 is 200.
std::int32_t encodedFactor(double factor)
{
    return static_cast<std::int32_t>(truncated<std::int64_t>((factor + 1.0) * 100.0));
}

} // namespace

std::int32_t CQuorGrabber::setCustomData(std::int32_t index, std::int32_t value)
{
    const DataWord* const word = dataWord(index);
    if (word == nullptr) {
        return kFailure;
    }
    auto* const feature = mFeatures.find<PvGenInteger>(word->feature);
    if (feature == nullptr) {
        logLine("-- GEN setCustomData Error");
        return kFailure;
    }
    word->written.log(static_cast<std::uint32_t>(value));
    (void)feature->SetValue(value);
    return kSuccess;
}

std::int32_t CQuorGrabber::getCustomData(std::int32_t index, std::int32_t* value)
{
    const DataWord* const word = dataWord(index);
    if (word == nullptr) {
        return kFailure;
    }
    auto* const feature = mFeatures.find<PvGenInteger>(word->feature);
    if (feature == nullptr) {
        logLine("-- GEN getCustomData Error");
        return kFailure;
    }
    std::int64_t number = 0;
    *value = feature->GetValue(number).IsOK() ? static_cast<std::int32_t>(number) : 0;
    word->read.log(static_cast<std::uint32_t>(*value));
    return kSuccess;
}

std::int32_t CQuorGrabber::setColorInformation(double first, double second, double third)
{
    mColor.factors = {first, second, third};
    for (std::int32_t index = 0; const double factor : mColor.factors) {
        (void)setCustomData(index++, encodedFactor(factor));
    }
    return kSuccess;
}

std::int32_t CQuorGrabber::getColorInformation(std::uint8_t* isColorCamera, double* first,
                                               double* second, double* third) const
{
    *isColorCamera = mColor.isColorCamera ? 1 : 0;
    *first = mColor.factors[0];
    *second = mColor.factors[1];
    *third = mColor.factors[2];
    return kSuccess;
}

std::int32_t CQuorGrabber::setUserDefinedName(const char* name)
{
    FixedText given;
    given = name;
    if (given != mIdentity.userDefinedName) {
        mIdentity.userDefinedName = given;
        mIsUserNameChanged = true;
    }
    return kSuccess;
}

std::int32_t CQuorGrabber::writeUserDefinedName()
{
    auto* const feature = mFeatures.find<PvGenString>("DeviceUserID");
    return feature != nullptr && feature->SetValue(mIdentity.userDefinedName.c_str()).IsOK()
               ? kSuccess
               : kFailure;
}
