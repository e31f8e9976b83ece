#include "Device.h"

namespace camera
{

using gige::wire::GvcpStatus;

void Device::powerOn()
{
    mStored.userName = mOptions.userName;
    if (mOptions.userSetsPrepared) {
        mStored.userSet1 = userSetOf(mValues);
        mStored.settings[FeatureId::UserSetDefaultSelector] = kUserSet1;
    }
    if (const StoredState kept = loadState(mOptions.stateFile); kept != StoredState{}) {
        mStored = kept;
    }
    take(mStored.settings);
    set(FeatureId::UserSetSelector, get(FeatureId::UserSetDefaultSelector));
    if (get(FeatureId::UserSetDefaultSelector) == kUserSet1) {
        take(mStored.userSet1);
    }
    take(mOptions.settings);
    if (mOptions.flashBusy.count() > 0) {
        mFlashEnd = now() + mOptions.flashBusy;
    }
    if (mOptions.recordAtPowerOn || isOn(FeatureId::RecordStartAtPowerOn)) {
        static_cast<void>(startRecording()); // refused while the flash card is written
    }
}

void Device::take(const std::map<FeatureId, std::int64_t>& settings)
{
    // Sizes and offsets limit each other, so all are set before any is judged.
    for (const auto& [feature, value] : settings) {
        if (canStartWith(featureOf(feature), value)) { // a file may hold anything
            set(feature, value);
        }
    }
    settle();
}

GvcpStatus Device::loadUserSet()
{
    const bool fromFactory = get(FeatureId::UserSetSelector) == kUserSetDefault;
    if (imaging() || (!fromFactory && mStored.userSet1.empty())) {
        return Status::AccessDenied;
    }
    take(fromFactory ? userSetOf(mFactory) : mStored.userSet1);
    changeFrameRate();
    return Status::Success;
}

GvcpStatus Device::saveUserSet()
{
    if (get(FeatureId::UserSetSelector) != kUserSet1) {
        return Status::AccessDenied; // the factory's set stays as it is
    }
    mStored.userSet1 = userSetOf(mValues);
    return keep() ? Status::Success : Status::LocalProblem;
}

bool Device::keep()
{
    for (const Feature& feature : featureTable()) {
        if (isKeptAlone(feature.id)) {
            mStored.settings[feature.id] = get(feature.id);
        }
    }
    return mOptions.stateFile.empty() || saveState(mOptions.stateFile, mStored);
}

std::string Device::userName()
{
    const std::scoped_lock lock(mLock);
    return mStored.userName;
}

void Device::setUserName(const std::string& name)
{
    const std::scoped_lock lock(mLock);
    mStored.userName = name;
    static_cast<void>(keep()); // the name register has no way to report a full disk
}

} // namespace camera
