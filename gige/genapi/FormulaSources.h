/// Numbers that formulas compute.
#ifndef TELVO_GIGE_GENAPI_FORMULASOURCES_H
#define TELVO_GIGE_GENAPI_FORMULASOURCES_H

#include "FormulaScope.h"
#include "NumberSource.h"

#include <cstdint>
#include <optional>

namespace gige::genapi
{

/// SwissKnife and IntSwissKnife: read only. Results are not cached.
class FormulaSource : public NumberSource
{
  public:
    FormulaSource(FormulaScope scope, Formula formula, Arithmetic arithmetic);

    Result<AccessMode> access(Evaluation& evaluation) override;
    Result<Number> read(Evaluation& evaluation) override;
    Status write(Evaluation& evaluation, const Number& value) override;
    Result<NumberRange> range(Evaluation& evaluation, const LimitChoice& wanted) override;

  private:
    FormulaScope mScope;
    Formula mFormula;
    Arithmetic mArithmetic;
};

struct ConverterFormulas {
    FormulaScope scope;
    Formula to;   // what the host writes, FROM, to what goes to the target
    Formula from; // what the target holds, TO, to what the host reads
};

/// What a converter's FormulaFrom does when the target's value grows.
enum class Slope : std::uint8_t {
    Automatic, // not told: falls if its values at the target's limits do
    Increasing,
    Decreasing,
    Varying, // bends, so that the target's limits say nothing
};

/// Converter and IntConverter: another node's value in another unit.
class ConverterSource : public NumberSource
{
  public:
    ConverterSource(Node& target, ConverterFormulas formulas, Arithmetic arithmetic, Slope slope);

    Result<AccessMode> access(Evaluation& evaluation) override;
    Result<Number> read(Evaluation& evaluation) override;
    Status write(Evaluation& evaluation, const Number& value) override;
    Result<NumberRange> range(Evaluation& evaluation, const LimitChoice& wanted) override;

  private:
    Result<Number> fromTarget(Evaluation& evaluation, const Number& value) const;
    Result<std::optional<Number>> limitFromTarget(Evaluation& evaluation,
                                                  const std::optional<Number>& limit) const;
    /// The target's limits, each converted; a decreasing slope makes the minimum the larger.
    Result<NumberRange> convertedRange(Evaluation& evaluation, const LimitChoice& ends) const;

    Node& mTarget;
    ConverterFormulas mFormulas;
    Arithmetic mArithmetic;
    Slope mSlope;
};

} // namespace gige::genapi

#endif
