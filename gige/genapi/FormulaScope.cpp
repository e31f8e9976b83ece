#include "FormulaScope.h"

#include "EnumerationNode.h"
#include "Register.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

namespace gige::genapi
{

namespace
{

using Item = NodeProperty::Item;

constexpr auto kLowestInteger = std::numeric_limits<std::int64_t>::min();
constexpr auto kHighestInteger = std::numeric_limits<std::int64_t>::max();
constexpr auto kHighestFloat = std::numeric_limits<double>::max();

constexpr std::string_view kEntrySuffix = ".Entry.";

constexpr std::pair<std::string_view, Item> kSuffixes[] = {
    {".Value", Item::Value},           {".Min", Item::Minimum},
    {".Max", Item::Maximum},           {".Inc", Item::Increment},
    {".AccessMode", Item::AccessMode}, {".Visibility", Item::Visibility},
    {".CachingMode", Item::Caching},
};

template <typename Enum>
Result<Number> numberOf(Enum value)
{
    return Number(static_cast<std::int64_t>(value));
}

Result<Number> entryOf(const NodeProperty& property)
{
    const auto* const enumeration = dynamic_cast<const EnumerationNode*>(property.node);
    if (enumeration == nullptr) {
        return Status::WrongKind;
    }
    const EnumEntryNode* const entry = enumeration->findEntry(property.entry);
    return entry == nullptr ? Status::NoSuchEntry : Result<Number>(entry->value());
}

Result<Number> limitOf(const NodeProperty& property, Evaluation& evaluation)
{
    const Result<NumberRange> range =
        property.node->range(evaluation, {.minimum = property.item == Item::Minimum,
                                          .maximum = property.item == Item::Maximum,
                                          .increment = property.item == Item::Increment});
    if (!range) {
        return range.status();
    }
    // A formula asks for a number: a node without a limit has that of its type.
    const bool isInteger = property.node->kind() == NodeKind::Integer;
    switch (property.item) {
    case Item::Minimum:
        return range->minimum.value_or(isInteger ? Number(kLowestInteger) : Number(-kHighestFloat));
    case Item::Maximum:
        return range->maximum.value_or(isInteger ? Number(kHighestInteger) : Number(kHighestFloat));
    default: // Increment
        return range->increment.value_or(Number(std::int64_t{1}));
    }
}

Result<Number> valueOf(const NodeProperty& property, Evaluation& evaluation)
{
    switch (property.item) {
    case Item::Value:
        return property.node->readChecked(evaluation);
    case Item::AccessMode: {
        const Result<AccessMode> mode = property.node->access(evaluation);
        return mode.andThen(numberOf<AccessMode>);
    }
    case Item::Visibility:
        return numberOf(property.node->info().visibility);
    case Item::Caching: {
        const Register* const registers = property.node->registers();
        return numberOf(registers == nullptr ? Caching::NoCache : registers->caching());
    }
    case Item::Entry:
        return entryOf(property);
    default:
        return limitOf(property, evaluation);
    }
}

} // namespace

NodeProperty propertyOf(Node& node, std::string_view name)
{
    if (const std::size_t at = name.find(kEntrySuffix); at != std::string_view::npos) {
        return {&node, Item::Entry, std::string(name.substr(at + kEntrySuffix.size()))};
    }
    const auto* const found = std::ranges::find_if(
        kSuffixes, [name](const auto& suffix) { return name.ends_with(suffix.first); });
    return {&node, found == std::end(kSuffixes) ? Item::Value : found->second, {}};
}

/// Fetches each operand once per evaluation, however often the formula names it.
class FormulaScope::Operands : public FormulaOperands
{
  public:
    Operands(const FormulaScope& scope, Arithmetic arithmetic, Evaluation& evaluation,
             const Number& argument)
        : mScope(scope),
          mArithmetic(arithmetic),
          mEvaluation(evaluation),
          mArgument(argument),
          mKnown(scope.mMeanings.size())
    {
    }

    Result<Number> operand(std::size_t slot) override
    {
        // Only when it is needed: each may cost a round trip, and one in a branch that is not taken
        // may well be unreadable now.
        if (!mKnown[slot]) {
            const Result<Number> fetched = fetch(mScope.mMeanings[slot]);
            if (!fetched) {
                return fetched;
            }
            mKnown[slot] = *fetched;
        }
        return *mKnown[slot];
    }

  private:
    Result<Number> fetch(const Meaning& meaning)
    {
        if (const auto* const property = std::get_if<NodeProperty>(&meaning)) {
            return valueOf(*property, mEvaluation);
        }
        if (const auto* const formula = std::get_if<Formula>(&meaning)) {
            return evaluateExpression(*formula);
        }
        const Number* const constant = std::get_if<Number>(&meaning);
        return constant == nullptr ? mArgument : *constant;
    }

    // Sub-formulas use earlier ones: a long row of them is a deep chain.
    Result<Number> evaluateExpression(const Formula& formula)
    {
        const Evaluation::Visit visit(mEvaluation);
        const Status status =
            visit.status() == Status::Ok ? mEvaluation.spend(formula.size()) : visit.status();
        return status == Status::Ok ? formula.evaluate(mArithmetic, *this) : status;
    }

    const FormulaScope& mScope;
    Arithmetic mArithmetic;
    Evaluation& mEvaluation;
    Number mArgument;
    std::vector<std::optional<Number>> mKnown; // by slot
};

void FormulaScope::add(const std::string& name, Meaning meaning)
{
    // The last declaration of a name counts.
    mNames.insert_or_assign(name, mMeanings.size());
    mMeanings.push_back(std::move(meaning));
}

void FormulaScope::addConstant(const std::string& name, const Number& value)
{
    add(name, value);
}

void FormulaScope::addVariable(const std::string& name, NodeProperty property)
{
    add(name, std::move(property));
}

void FormulaScope::addArgument(const std::string& name)
{
    add(name, Argument{});
}

Status FormulaScope::addExpression(const std::string& name, std::string_view text)
{
    Result<Formula> formula = compile(text);
    const Status status = formula.status();
    if (status == Status::Ok) {
        add(name, *std::move(formula));
    }
    return status;
}

Result<Formula> FormulaScope::compile(std::string_view text) const
{
    return Formula::compile(text, mNames);
}

Result<Number> FormulaScope::evaluate(const Formula& formula, Arithmetic arithmetic,
                                      Evaluation& evaluation, const Number& argument) const
{
    // The meanings count, too: a table for them is made for each evaluation.
    const Status status = evaluation.spend(formula.size() + mMeanings.size());
    if (status != Status::Ok) {
        return status;
    }
    Operands operands(*this, arithmetic, evaluation, argument);
    return formula.evaluate(arithmetic, operands);
}

} // namespace gige::genapi
