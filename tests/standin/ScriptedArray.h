#ifndef TELVO_TESTS_STANDIN_SCRIPTEDARRAY_H
#define TELVO_TESTS_STANDIN_SCRIPTEDARRAY_H

#include "PvGenParameterArray.h"
#include "ScriptedParameters.h"

#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <vector>

/// A parameter array that tests fill and empty. Parameters are created by naming them; naming one
/// under another type replaces it. Handles that the library bound earlier go on working on the old
/// object until it binds anew.
class ScriptedArray : public PvGenParameterArray
{
  public:
    /// @param prefix  before every name in the recorded calls: "", "link/", "stream/"
    explicit ScriptedArray(std::string prefix) : mPrefix(std::move(prefix)) {}

    PvGenParameter* Get(const PvString& name) override;

    ScriptedInteger& integer(const std::string& name);
    ScriptedEnum& enumeration(const std::string& name);
    ScriptedBoolean& boolean(const std::string& name);
    ScriptedString& string(const std::string& name);
    ScriptedCommand& command(const std::string& name);
    /// The array lacks these from now on.
    void remove(std::initializer_list<std::string> names);
    void remove(const std::string& name);
    void removeAll();

  private:
    template <typename Type>
    Type& get(const std::string& name);

    std::string mPrefix;
    std::map<std::string, std::unique_ptr<PvGenParameter>> mParameters;
    std::vector<std::unique_ptr<PvGenParameter>> mReplaced; // may still be bound
};

#endif
