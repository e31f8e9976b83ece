#include "RequestFields.h"

#include <cmath>
#include <limits>
#include <utility>

namespace telvo
{

RequestFields::RequestFields(nlohmann::json object, std::string what)
    : mObject(std::move(object)), mWhat(std::move(what))
{
    if (!mObject.is_object()) {
        throw WrongRequest(mWhat + " has to be an object");
    }
}

std::string RequestFields::text(const char* name)
{
    const nlohmann::json value = take(name);
    if (!value.is_string()) {
        fail(name, "a text");
    }
    return value.get<std::string>();
}

bool RequestFields::flag(const char* name)
{
    const nlohmann::json value = take(name);
    if (!value.is_boolean()) {
        fail(name, "true or false");
    }
    return value.get<bool>();
}

std::uint64_t RequestFields::number(const char* name, std::uint64_t most)
{
    const nlohmann::json value = take(name);
    if (!value.is_number_unsigned() || value.get<std::uint64_t>() > most) {
        fail(name, ("a whole number from 0 to " + std::to_string(most)).c_str());
    }
    return value.get<std::uint64_t>();
}

std::uint32_t RequestFields::number(const char* name)
{
    return static_cast<std::uint32_t>(number(name, std::numeric_limits<std::uint32_t>::max()));
}

double RequestFields::real(const char* name, double most)
{
    const nlohmann::json value = take(name);
    const double number = value.is_number() ? value.get<double>() : -1;
    if (!std::isfinite(number) || number < 0 || number > most) {
        fail(name, "a number that makes sense");
    }
    return number;
}

RequestFields RequestFields::object(const char* name)
{
    return {take(name), name};
}

nlohmann::json RequestFields::any(const char* name)
{
    return take(name);
}

void RequestFields::requireEnd() const
{
    if (!mObject.empty()) {
        throw WrongRequest(mWhat + " has nothing called '" + mObject.begin().key() + "'");
    }
}

nlohmann::json RequestFields::take(const char* name)
{
    const auto found = mObject.find(name);
    if (found == mObject.end()) {
        throw WrongRequest(mWhat + " needs '" + name + "'");
    }
    nlohmann::json value = std::move(*found);
    mObject.erase(found);
    return value;
}

void RequestFields::fail(const char* name, const char* expected) const
{
    throw WrongRequest("'" + std::string(name) + "' of " + mWhat + " has to be " + expected);
}

} // namespace telvo
