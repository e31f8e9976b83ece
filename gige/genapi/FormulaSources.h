/// Numbers that formulas compute.
#ifndef TELVO_GIGE_GENAPI_FORMULASOURCES_H
#define TELVO_GIGE_GENAPI_FORMULASOURCES_H

#include "FormulaScope.h"
#include "NumberSource.h"

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
    Result<NumberRange> range(Evaluation& evaluation) override;

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

/// Converter and IntConverter: another node's value in another unit.
class ConverterSource : public NumberSource
{
  public:
    /// @param isMonotonic  false: the formulas bend, so that the target's limits say nothing
    ConverterSource(Node& target, ConverterFormulas formulas, Arithmetic arithmetic,
                    bool isMonotonic);

    Result<AccessMode> access(Evaluation& evaluation) override;
    Result<Number> read(Evaluation& evaluation) override;
    Status write(Evaluation& evaluation, const Number& value) override;
    Result<NumberRange> range(Evaluation& evaluation) override;

  private:
    Result<Number> fromTarget(Evaluation& evaluation, const Number& value) const;

    Node& mTarget;
    ConverterFormulas mFormulas;
    Arithmetic mArithmetic;
    bool mIsMonotonic;
};

} // namespace gige::genapi

#endif
