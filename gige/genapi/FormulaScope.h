#ifndef TELVO_GIGE_GENAPI_FORMULASCOPE_H
#define TELVO_GIGE_GENAPI_FORMULASCOPE_H

#include "Formula.h"
#include "Node.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace gige::genapi
{

/// What a formula's name stands for in another node.
struct NodeProperty {
    enum class Item : std::uint8_t {
        Value,
        Minimum,
        Maximum,
        Increment,
        AccessMode, // as the number of the enum AccessMode
        Visibility, // as the number of the enum Visibility
        Caching,    // as the number of the enum Caching
        Entry,      // integer of an enumeration's entry
    };

    Node* node = nullptr;
    Item item = Item::Value;
    std::string entry; // name, for Entry
};

/// By the suffix of a formula's name: "X.Max", "X.Entry.NAME"; no suffix means the value.
NodeProperty propertyOf(Node& node, std::string_view name);

/// The names of one formula node: variables, constants, named sub-formulas, and the argument of a
/// converter. A sub-formula sees the names declared before it, so none can contain itself.
class FormulaScope
{
  public:
    void addConstant(const std::string& name, const Number& value);
    void addVariable(const std::string& name, NodeProperty property);
    /// FROM and TO: the number that a converter converts.
    void addArgument(const std::string& name);
    Status addExpression(const std::string& name, std::string_view text);

    /// @return the statuses of Formula::compile
    Result<Formula> compile(std::string_view text) const;

    /// @param argument  what FROM and TO stand for
    Result<Number> evaluate(const Formula& formula, Arithmetic arithmetic, Evaluation& evaluation,
                            const Number& argument = std::int64_t{0}) const;

  private:
    using Argument = std::monostate;
    using Meaning = std::variant<Number, NodeProperty, Argument, Formula>;
    class Operands;

    void add(const std::string& name, Meaning meaning);

    FormulaNames mNames;
    std::vector<Meaning> mMeanings; // by slot
};

} // namespace gige::genapi

#endif
