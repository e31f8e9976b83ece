#ifndef TELVO_TOOLS_TELVO_PANEL_WEB_REQUESTFIELDS_H
#define TELVO_TOOLS_TELVO_PANEL_WEB_REQUESTFIELDS_H

#include "Request.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>

namespace telvo
{

/// What is wrong with a request, as one line.
struct WrongRequest : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/**
 * The members of an object, each taken out once, so that what is left at the end is known to be
 * nobody's. Every function throws WrongRequest for a member that is missing or of another type.
 */
class RequestFields
{
  public:
    /// @param what  what the object is called in errors
    RequestFields(nlohmann::json object, std::string what);

    bool has(const char* name) const { return mObject.contains(name); }

    std::string text(const char* name);
    bool flag(const char* name);
    std::uint64_t number(const char* name, std::uint64_t most);
    std::uint32_t number(const char* name);
    double real(const char* name, double most);
    RequestFields object(const char* name);
    nlohmann::json any(const char* name);

    /// Throws WrongRequest where anything is left.
    void requireEnd() const;

  private:
    nlohmann::json take(const char* name);
    [[noreturn]] void fail(const char* name, const char* expected) const;

    nlohmann::json mObject;
    std::string mWhat;
};

} // namespace telvo

#endif
