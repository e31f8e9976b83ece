/// Parameters that tests script. The setters return the object, so that they chain:
/// `camera.integer("Width").value(640).range(16, 1280)`. `next` queues answers that the following
/// reads give before the value counts again. All members from any thread.
#ifndef TELVO_TESTS_STANDIN_SCRIPTEDPARAMETERS_H
#define TELVO_TESTS_STANDIN_SCRIPTEDPARAMETERS_H

#include "PvGenParameter.h"

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <vector>

/// What all of them share: the name in the recorded calls, and the availability.
template <typename Derived, typename Interface>
class ScriptedParameter : public Interface
{
  public:
    explicit ScriptedParameter(std::string name) : mName(std::move(name)) {}

    Derived& available(bool available);
    bool IsAvailable() override;

  protected:
    /// Records "Name.Operation arguments" and gives its result: the scripted one, else
    /// NOT_AVAILABLE for an unavailable parameter, else `usual`.
    PvResult call(const char* operation, const std::string& arguments = {},
                  PvResult::Code usual = PvResult::Code::Ok);

  private:
    std::string mName;
    bool mAvailable = true;
};

class ScriptedInteger : public ScriptedParameter<ScriptedInteger, PvGenInteger>
{
  public:
    using ScriptedParameter::ScriptedParameter;

    ScriptedInteger& value(std::int64_t value);
    ScriptedInteger& range(std::int64_t minimum, std::int64_t maximum);
    /// @param operation  "GetValue", "GetMin" or "GetMax"
    ScriptedInteger& next(const std::string& operation, std::deque<std::int64_t> answers);
    std::int64_t value() const;

    PvResult GetValue(std::int64_t& value) override;
    PvResult SetValue(std::int64_t value) override;
    PvResult GetMin(std::int64_t& minimum) override;
    PvResult GetMax(std::int64_t& maximum) override;

  private:
    PvResult read(const char* operation, const std::int64_t& lasting, std::int64_t& out);

    std::int64_t mValue = 0;
    std::int64_t mMinimum = 0;
    std::int64_t mMaximum = 0xFFFFFFFF;
    std::map<std::string, std::deque<std::int64_t>> mNext;
};

class ScriptedEnum : public ScriptedParameter<ScriptedEnum, PvGenEnum>
{
  public:
    using ScriptedParameter::ScriptedParameter;

    /// The value may be one that is no entry: then it can be read, but not written.
    ScriptedEnum& value(const std::string& entry);
    ScriptedEnum& entries(std::vector<std::string> entries);
    ScriptedEnum& next(std::deque<std::string> values);
    std::string value() const;

    PvResult GetValue(PvString& entryName) override;
    PvResult SetValue(const PvString& entryName) override;

  private:
    std::string mValue;
    std::vector<std::string> mEntries;
    std::deque<std::string> mNext;
};

class ScriptedBoolean : public ScriptedParameter<ScriptedBoolean, PvGenBoolean>
{
  public:
    using ScriptedParameter::ScriptedParameter;

    ScriptedBoolean& value(bool value);
    bool value() const;

    PvResult GetValue(bool& value) override;
    PvResult SetValue(bool value) override;

  private:
    bool mValue = false;
};

class ScriptedString : public ScriptedParameter<ScriptedString, PvGenString>
{
  public:
    using ScriptedParameter::ScriptedParameter;

    ScriptedString& value(const std::string& value);
    std::string value() const;

    PvResult GetValue(PvString& value) override;
    PvResult SetValue(const PvString& value) override;

  private:
    std::string mValue;
};

class ScriptedCommand : public ScriptedParameter<ScriptedCommand, PvGenCommand>
{
  public:
    using ScriptedParameter::ScriptedParameter;

    PvResult Execute() override;
};

#endif
