#include "ScriptedParameters.h"

#include "StandIn.h"

#include <algorithm>
#include <mutex>

namespace
{

std::unique_lock<std::mutex> lockScript()
{
    return std::unique_lock(StandIn::current().mutex());
}

} // namespace

template <typename Derived, typename Interface>
Derived& ScriptedParameter<Derived, Interface>::available(bool available)
{
    const auto lock = lockScript();
    mAvailable = available;
    return static_cast<Derived&>(*this);
}

template <typename Derived, typename Interface>
bool ScriptedParameter<Derived, Interface>::IsAvailable()
{
    return call("IsAvailable").IsOK();
}

template <typename Derived, typename Interface>
PvResult ScriptedParameter<Derived, Interface>::call(const char* operation,
                                                     const std::string& arguments, Code usual)
{
    if (const auto lock = lockScript(); !mAvailable) {
        usual = Code::NotAvailable;
    }
    return StandIn::current().call(mName + "." + operation, arguments, usual);
}

template class ScriptedParameter<ScriptedInteger, PvGenInteger>;
template class ScriptedParameter<ScriptedEnum, PvGenEnum>;
template class ScriptedParameter<ScriptedBoolean, PvGenBoolean>;
template class ScriptedParameter<ScriptedString, PvGenString>;
template class ScriptedParameter<ScriptedCommand, PvGenCommand>;

ScriptedInteger& ScriptedInteger::value(std::int64_t value)
{
    const auto lock = lockScript();
    mValue = value;
    return *this;
}

ScriptedInteger& ScriptedInteger::range(std::int64_t minimum, std::int64_t maximum)
{
    const auto lock = lockScript();
    mMinimum = minimum;
    mMaximum = maximum;
    return *this;
}

ScriptedInteger& ScriptedInteger::next(const std::string& operation,
                                       std::deque<std::int64_t> answers)
{
    const auto lock = lockScript();
    mNext[operation] = std::move(answers);
    return *this;
}

std::int64_t ScriptedInteger::value() const
{
    const auto lock = lockScript();
    return mValue;
}

PvResult ScriptedInteger::read(const char* operation, const std::int64_t& lasting,
                               std::int64_t& out)
{
    const PvResult result = call(operation);
    const auto lock = lockScript();
    std::deque<std::int64_t>& queued = mNext[operation];
    const bool hasQueued = !queued.empty();
    const std::int64_t answer = hasQueued ? queued.front() : lasting;
    if (hasQueued) {
        queued.pop_front();
    }
    if (result.IsOK()) {
        out = answer;
    }
    return result;
}

PvResult ScriptedInteger::GetValue(std::int64_t& value)
{
    return read("GetValue", mValue, value);
}

PvResult ScriptedInteger::GetMin(std::int64_t& minimum)
{
    return read("GetMin", mMinimum, minimum);
}

PvResult ScriptedInteger::GetMax(std::int64_t& maximum)
{
    return read("GetMax", mMaximum, maximum);
}

PvResult ScriptedInteger::SetValue(std::int64_t value)
{
    const bool inRange = [&] {
        const auto lock = lockScript();
        return mMinimum <= value && value <= mMaximum;
    }();
    const PvResult result =
        call("SetValue", std::to_string(value), inRange ? Code::Ok : Code::OutOfRange);
    if (result.IsOK()) {
        const auto lock = lockScript();
        mValue = value;
    }
    return result;
}

ScriptedEnum& ScriptedEnum::value(const std::string& entry)
{
    const auto lock = lockScript();
    mValue = entry;
    return *this;
}

ScriptedEnum& ScriptedEnum::entries(std::vector<std::string> entries)
{
    const auto lock = lockScript();
    mEntries = std::move(entries);
    return *this;
}

ScriptedEnum& ScriptedEnum::next(std::deque<std::string> values)
{
    const auto lock = lockScript();
    mNext = std::move(values);
    return *this;
}

std::string ScriptedEnum::value() const
{
    const auto lock = lockScript();
    return mValue;
}

PvResult ScriptedEnum::GetValue(PvString& entryName)
{
    const PvResult result = call("GetValue");
    const auto lock = lockScript();
    std::string answer = mValue;
    if (!mNext.empty()) {
        answer = mNext.front();
        mNext.pop_front();
    }
    if (result.IsOK()) {
        entryName = PvString(answer);
    }
    return result;
}

PvResult ScriptedEnum::SetValue(const PvString& entryName)
{
    const std::string entry = entryName.GetAscii();
    const bool known = [&] {
        const auto lock = lockScript();
        return std::find(mEntries.begin(), mEntries.end(), entry) != mEntries.end();
    }();
    const PvResult result = call("SetValue", entry, known ? Code::Ok : Code::InvalidParameter);
    if (result.IsOK()) {
        value(entry);
    }
    return result;
}

ScriptedBoolean& ScriptedBoolean::value(bool value)
{
    const auto lock = lockScript();
    mValue = value;
    return *this;
}

bool ScriptedBoolean::value() const
{
    const auto lock = lockScript();
    return mValue;
}

PvResult ScriptedBoolean::GetValue(bool& value)
{
    const PvResult result = call("GetValue");
    if (result.IsOK()) {
        const auto lock = lockScript();
        value = mValue;
    }
    return result;
}

PvResult ScriptedBoolean::SetValue(bool newValue)
{
    const PvResult result = call("SetValue", newValue ? "1" : "0");
    if (result.IsOK()) {
        value(newValue);
    }
    return result;
}

ScriptedString& ScriptedString::value(const std::string& value)
{
    const auto lock = lockScript();
    mValue = value;
    return *this;
}

std::string ScriptedString::value() const
{
    const auto lock = lockScript();
    return mValue;
}

PvResult ScriptedString::GetValue(PvString& value)
{
    const PvResult result = call("GetValue");
    if (result.IsOK()) {
        const auto lock = lockScript();
        value = PvString(mValue);
    }
    return result;
}

PvResult ScriptedString::SetValue(const PvString& newValue)
{
    const PvResult result = call("SetValue", newValue.GetAscii());
    if (result.IsOK()) {
        value(newValue.GetAscii());
    }
    return result;
}

PvResult ScriptedCommand::Execute()
{
    return call("Execute");
}
