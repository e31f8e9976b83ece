#include "ParameterBrowser.h"

#include "FeatureText.h"

#include <utility>

namespace gige::ui
{

namespace
{

std::string outcome(const Feature& feature, const std::string& error)
{
    if (!error.empty()) {
        return ": refused with " + error + ".";
    }
    return feature.info().kind == FeatureKind::Command ? ": executed." : ": written.";
}

} // namespace

ParameterBrowser::ParameterBrowser(FeatureSource& source, std::function<void()> changed)
    : mChanged(std::move(changed)),
      mSource(source),
      mTree(source.features()),
      mStates(mTree.items().size()),
      mThread([this](const std::stop_token& stop) { work(stop); })
{
}

std::optional<FeatureState> ParameterBrowser::state(std::size_t item) const
{
    const std::lock_guard lock(mLock);
    return mStates[item];
}

std::string ParameterBrowser::message() const
{
    const std::lock_guard lock(mLock);
    return mMessage;
}

void ParameterBrowser::refresh()
{
    const std::lock_guard lock(mLock);
    mForgetWanted = true;
    mMessage.clear();
    mWake.notify_all();
}

bool ParameterBrowser::edit(std::size_t item, std::string_view text)
{
    const std::lock_guard lock(mLock);
    const Feature* const feature = mTree.items()[item].feature;
    if (feature == nullptr || !mStates[item]) {
        return false;
    }
    auto parsed = parseValue(feature->info(), *mStates[item], text);
    if (auto* const refusal = std::get_if<std::string>(&parsed)) {
        mMessage = std::move(*refusal);
        return false;
    }
    mMessage.clear();
    mEdits.push_back({item, std::get<FeatureValue>(std::move(parsed))});
    mWake.notify_all();
    return true;
}

void ParameterBrowser::work(const std::stop_token& stop)
{
    while (const auto step = nextStep(stop)) {
        step();
    }
}

std::function<void()> ParameterBrowser::nextStep(const std::stop_token& stop)
{
    std::unique_lock lock(mLock);
    mWake.wait(lock, stop,
               [this] { return !mEdits.empty() || mForgetWanted || mNext < mStates.size(); });
    if (stop.stop_requested()) {
        return nullptr;
    }
    if (!mEdits.empty()) {
        Edit edit = std::move(mEdits.front());
        mEdits.pop_front();
        return [this, edit = std::move(edit)] { write(edit); };
    }
    if (std::exchange(mForgetWanted, false)) {
        mNext = 0;
        return [this] { mSource.forgetValues(); };
    }
    return [this] { readNext(); };
}

void ParameterBrowser::write(const Edit& edit)
{
    const FeatureItem& item = mTree.items()[edit.item];
    const std::string error = item.feature->write(edit.value);
    FeatureState state = item.feature->read();
    {
        const std::lock_guard lock(mLock);
        mMessage = item.label + outcome(*item.feature, error);
        mStates[edit.item] = std::move(state);
        mForgetWanted = true;
    }
    mChanged();
}

void ParameterBrowser::readNext()
{
    const std::size_t item = mNext; // written by this thread alone
    Feature* const feature = mTree.items()[item].feature;
    std::optional<FeatureState> state;
    if (feature != nullptr) {
        state = feature->read();
    }
    {
        const std::lock_guard lock(mLock);
        mStates[item] = std::move(state);
        ++mNext;
    }
    mChanged();
}

} // namespace gige::ui
