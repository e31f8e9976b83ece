#include "ScriptedArray.h"

#include "StandIn.h"

#include <utility>

template <typename Type>
Type& ScriptedArray::get(const std::string& name)
{
    const std::lock_guard lock(StandIn::current().mutex());
    std::unique_ptr<PvGenParameter>& place = mParameters[name];
    auto* existing = dynamic_cast<Type*>(place.get());
    if (existing != nullptr) {
        return *existing;
    }
    auto created = std::make_unique<Type>(mPrefix + name);
    Type& parameter = *created;
    mReplaced.push_back(std::exchange(place, std::move(created)));
    return parameter;
}

PvGenParameter* ScriptedArray::Get(const PvString& name)
{
    StandIn& standIn = StandIn::current();
    standIn.record(StandIn::Kind::Lookup, "Get " + mPrefix + name.GetAscii());
    const std::lock_guard lock(standIn.mutex());
    const auto found = mParameters.find(name.GetAscii());
    return found == mParameters.end() ? nullptr : found->second.get();
}

ScriptedInteger& ScriptedArray::integer(const std::string& name)
{
    return get<ScriptedInteger>(name);
}

ScriptedEnum& ScriptedArray::enumeration(const std::string& name)
{
    return get<ScriptedEnum>(name);
}

ScriptedBoolean& ScriptedArray::boolean(const std::string& name)
{
    return get<ScriptedBoolean>(name);
}

ScriptedString& ScriptedArray::string(const std::string& name)
{
    return get<ScriptedString>(name);
}

ScriptedCommand& ScriptedArray::command(const std::string& name)
{
    return get<ScriptedCommand>(name);
}

void ScriptedArray::remove(std::initializer_list<std::string> names)
{
    for (const std::string& name : names) {
        remove(name);
    }
}

void ScriptedArray::remove(const std::string& name)
{
    const std::lock_guard lock(StandIn::current().mutex());
    mReplaced.push_back(std::move(mParameters[name]));
    mParameters.erase(name);
}

void ScriptedArray::removeAll()
{
    const std::lock_guard lock(StandIn::current().mutex());
    for (auto& [name, parameter] : mParameters) {
        mReplaced.push_back(std::move(parameter));
    }
    mParameters.clear();
}
